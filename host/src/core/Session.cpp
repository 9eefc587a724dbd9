// The session: the one NX session object, its environment, the work part, the listing window,
// model-update counting and the start-up calls of the user-function library.
#include <cstdlib>
#include <cstring>
#include <map>

#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/Update.hxx>
#include <uf.h>
#include <uf_modl.h>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "core/Core.hpp"
#include "core/Model.hpp"
#include "core/UfErrors.hpp"

namespace host::core {
namespace {

class PartCollectionImpl : public NXOpen::PartCollection {
public:
    PartCollectionImpl() : tag(Tags::Reserve()) {}
    tag_t tag;
};

class ListingWindowImpl : public NXOpen::ListingWindow {
public:
    ListingWindowImpl() : tag(Tags::Reserve()) {}
    tag_t tag;
};

class UpdateImpl : public NXOpen::Update {
public:
    UpdateImpl() : tag(Tags::Reserve()) {}
    tag_t tag;
};

class SessionImpl : public NXOpen::Session {
public:
    PartCollectionImpl parts;
    ListingWindowImpl listing;
    UpdateImpl update;
};

}  // namespace

SessionState& State() {
    static SessionState* state = new SessionState;  // never destroyed, like the session
    return *state;
}

PartImpl* WorkPartImpl() { return State().workPart.get(); }

namespace {

// The counters by name; a std::map keeps each counter where it is, so that every entry point
// keeps a reference to its own.
std::map<std::string, long>& Counters() {
    static std::map<std::string, long>* counters = new std::map<std::string, long>;  // never destroyed
    return *counters;
}

// How deep the plug-in is inside NX calls: only the outermost one is the plug-in's own. Every NX
// call reads it twice; initial-exec spares each read a call of __tls_get_addr (the host library
// is loaded with the program, never opened later).
#if defined(__ELF__)
__attribute__((tls_model("initial-exec")))
#endif
thread_local int nxCallDepth = 0;

}  // namespace

int RequireInitialized(const char* call) {
    SessionState& state = State();
    if (state.ufInitialized) return 0;
    state.uninitializedCalls.push_back(call);
    return kUfNotInitialized;
}

}  // namespace host::core

namespace NXOpen {

using host::core::State;

Session::Session() = default;
Session::~Session() = default;

Session* Session::GetSession() {
    HOST_NX_CALL("Session::GetSession");
    static host::core::SessionImpl* session = new host::core::SessionImpl;
    return session;
}

PartCollection* Session::Parts() { HOST_NX_CALL("Session::Parts"); return &static_cast<host::core::SessionImpl*>(this)->parts; }

NXString Session::GetEnvironmentVariableValue(const NXString& envVaribable) {
    HOST_NX_CALL("Session::GetEnvironmentVariableValue");
    return GetEnvironmentVariableValue(envVaribable.GetLocaleText());
}

// An undefined variable gives an empty string, not an error.
NXString Session::GetEnvironmentVariableValue(const char* envVaribable) {
    HOST_NX_CALL("Session::GetEnvironmentVariableValue");
    std::optional<std::string> value = host::EnvironmentValue(envVaribable == nullptr ? "" : envVaribable);
    return NXString(value.value_or(std::string()), NXString::Locale);
}

ListingWindow* Session::ListingWindow() { HOST_NX_CALL("Session::ListingWindow"); return &static_cast<host::core::SessionImpl*>(this)->listing; }
Update* Session::UpdateManager() { HOST_NX_CALL("Session::UpdateManager"); return &static_cast<host::core::SessionImpl*>(this)->update; }

BaseSession::BaseSession() = default;
BaseSession::~BaseSession() = default;

ListingWindow::ListingWindow() = default;
ListingWindow::~ListingWindow() = default;
void ListingWindow::Open() { HOST_NX_CALL("ListingWindow::Open"); State().listingOpen = true; }
void ListingWindow::Close() { HOST_NX_CALL("ListingWindow::Close"); State().listingOpen = false; }
bool ListingWindow::IsOpen() { HOST_NX_CALL("ListingWindow::IsOpen"); return State().listingOpen; }
void ListingWindow::WriteLine(const NXString& msg) { HOST_NX_CALL("ListingWindow::WriteLine"); WriteLine(msg.GetLocaleText()); }
// NX opens the window when a line is written to it.
void ListingWindow::WriteLine(const char* msg) {
    HOST_NX_CALL("ListingWindow::WriteLine");
    State().listingOpen = true;
    State().listingLines.push_back(msg == nullptr ? "" : msg);
}
tag_t ListingWindow::Tag() const { HOST_NX_CALL("ListingWindow::Tag"); return static_cast<const host::core::ListingWindowImpl*>(this)->tag; }

Update::Update() = default;
Update::~Update() = default;
tag_t Update::Tag() const { HOST_NX_CALL("Update::Tag"); return static_cast<const host::core::UpdateImpl*>(this)->tag; }

PartCollection::PartCollection() = default;
PartCollection::~PartCollection() = default;

// NX throws when there is no work part.
Part* PartCollection::Work() {
    HOST_NX_CALL("PartCollection::Work");
    Part* work = host::core::WorkPartImpl();
    if (work == nullptr) throw NXException::Create("There is no work part");
    return work;
}
Part* PartCollection::Display() { HOST_NX_CALL("PartCollection::Display"); return host::core::WorkPartImpl(); }
BasePart* PartCollection::BaseWork() { HOST_NX_CALL("PartCollection::BaseWork"); return host::core::WorkPartImpl(); }
tag_t PartCollection::Tag() const { HOST_NX_CALL("PartCollection::Tag"); return static_cast<const host::core::PartCollectionImpl*>(this)->tag; }

}  // namespace NXOpen

namespace host {

std::optional<std::string> EnvironmentValue(const std::string& name) {
    const auto& environment = core::State().environment;
    auto found = environment.find(name);
    if (found == environment.end()) return std::nullopt;
    return found->second;
}

void SetEnvironmentVariable(const std::string& name, const std::string& value) {
    core::State().environment[name] = value;
}

void UnsetEnvironmentVariable(const std::string& name) { core::State().environment.erase(name); }

int ModelUpdateCount() { return core::State().modelUpdates; }

Activity& CurrentActivity() {
    static Activity activity;
    return activity;
}
NxCall::NxCall(long& counter) {
    if (core::nxCallDepth++ == 0) ++counter;
}

NxCall::~NxCall() { --core::nxCallDepth; }

PluginCode::PluginCode() : saved_(core::nxCallDepth) { core::nxCallDepth = 0; }

PluginCode::~PluginCode() { core::nxCallDepth = saved_; }

UncountedNxCalls::UncountedNxCalls() { ++core::nxCallDepth; }

UncountedNxCalls::~UncountedNxCalls() { --core::nxCallDepth; }

long& NxCallCounter(const char* name) { return core::Counters()[name]; }

void ResetNxCallCounts() {
    for (auto& counter : core::Counters()) counter.second = 0;
}

std::map<std::string, long> NxCallCounts() {
    std::map<std::string, long> counts;
    for (const auto& [name, count] : core::Counters())
        if (count > 0) counts[name] = count;
    return counts;
}

const std::vector<std::string>& UninitializedCalls() { return core::State().uninitializedCalls; }

void ResetSession() {
    // The dialogs go first: their nodes and collectors refer to bodies of the work part.
    ResetUserInterface();
    core::SessionState& state = core::State();
    state.workPart.reset();
    state = core::SessionState();
    ResetNxCallCounts();
    Activity& activity = CurrentActivity();
    activity.bodiesInFile = 0;
    activity.bodiesLoaded = 0;
    activity.treeRowsInserted = 0;
}

}  // namespace host

// ---------------------------------------------------------------------------------------------
// User-function library: start-up, environment, memory, messages, model update.

extern "C" {

int UF_initialize(void) {
    HOST_NX_CALL("UF_initialize");
    host::core::State().ufInitialized = true;
    return 0;
}

int UF_is_initialized(void) { HOST_NX_CALL("UF_is_initialized"); return host::core::State().ufInitialized ? 1 : 0; }

int UF_terminate(void) {
    HOST_NX_CALL("UF_terminate");
    host::core::State().ufInitialized = false;
    return 0;
}

// The translation points into the session's own copy of the value: valid until the variable
// changes or the session is reset; the caller neither frees nor modifies it.
int UF_translate_variable(const char* variable, char** translation) {
    HOST_NX_CALL("UF_translate_variable");
    if (int code = host::core::RequireInitialized("UF_translate_variable")) return code;
    if (translation == nullptr) return host::core::kUfNullArgument;
    *translation = nullptr;
    if (variable == nullptr) return host::core::kUfNullArgument;
    auto& environment = host::core::State().environment;
    auto found = environment.find(variable);
    if (found != environment.end()) *translation = const_cast<char*>(found->second.c_str());
    return 0;
}

void UF_free(void* data) { HOST_NX_CALL("UF_free"); std::free(data); }

int UF_print_syslog(char* message, logical) {
    HOST_NX_CALL("UF_print_syslog");
    if (int code = host::core::RequireInitialized("UF_print_syslog")) return code;
    host::core::State().syslogLines.push_back(message == nullptr ? "" : message);
    return 0;
}

int UF_get_fail_message(int fail_code, char message[133]) {
    HOST_NX_CALL("UF_get_fail_message");
    if (message == nullptr) return host::core::kUfNullArgument;
    std::strncpy(message, host::core::FailMessage(fail_code), 132);
    message[132] = '\0';
    return 0;
}

int UF_MODL_update(void) {
    HOST_NX_CALL("UF_MODL_update");
    if (int code = host::core::RequireInitialized("UF_MODL_update")) return code;
    ++host::core::State().modelUpdates;
    return 0;
}

}  // extern "C"
