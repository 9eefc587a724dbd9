// What the two halves of the host share internally: the session core (parts, bodies, attributes,
// user-function calls, part files, clock) and the user interface (dialogs, blocks, tree, message
// boxes, selection, windows). Tests and the runner use Driver.hpp instead.
#pragma once

#include <optional>
#include <string>

#include <NXOpen/TaggedObject.hxx>

namespace host {

// Every NX entry point the host implements (user-function calls and NX Open methods; not the
// NXString and NXException value types) starts with HOST_NX_CALL("Class::Method"): the call is
// counted by name (host::NxCallCounts) when the plug-in makes it, not when the host calls its own
// entry points inside one. A handler of the plug-in that an NX call runs (the dialog's handlers
// during Show, a button pressed through its window) counts its own calls again: PluginCode.
class NxCall {
public:
    explicit NxCall(long& counter);
    ~NxCall();
    NxCall(const NxCall&) = delete;
    NxCall& operator=(const NxCall&) = delete;
};

// Runs the plug-in's code from inside an NX call: its NX calls count.
class PluginCode {
public:
    PluginCode();
    ~PluginCode();
    PluginCode(const PluginCode&) = delete;
    PluginCode& operator=(const PluginCode&) = delete;

private:
    int saved_;
};

// The counter of an entry point, made on first use; ResetSession sets every counter to 0.
long& NxCallCounter(const char* name);

#define HOST_NX_CALL(name)                                                     \
    static long& host_nx_call_counter_ = ::host::NxCallCounter(name);          \
    const ::host::NxCall host_nx_call_(host_nx_call_counter_)

// The body, face or edge of the work part with this tag (faces and edges as its part file names
// them), with its type and subtype as UF_OBJ_ask_type_and_subtype gives them; NULL when the work
// part has none.
NXOpen::TaggedObject* WorkPartObject(unsigned int tag, int* type = nullptr, int* subtype = nullptr);

// Every tagged object of the session, by tag (UF calls address objects by tag).
class Tags {
public:
    // Registers obj under a given tag (bodies keep the tags of their part file). A tag that is
    // already in use is an error (std::logic_error).
    static void Assign(NXOpen::TaggedObject* obj, tag_t tag);
    // Registers obj under a new tag that no object uses.
    static tag_t AssignNew(NXOpen::TaggedObject* obj);
    // A new tag that no object uses and none will: the Tag() of an NX helper object that is not a
    // TaggedObject (collections, the layer manager, the listing window, the message box).
    static tag_t Reserve();
    // Forgets obj (called when it is destroyed).
    static void Release(NXOpen::TaggedObject* obj);
    // The object with this tag, or NULL.
    static NXOpen::TaggedObject* Find(tag_t tag);
    // The tag of obj, as TaggedObject::Tag gives it; Find looks this object up first.
    static tag_t Asked(const NXOpen::TaggedObject* obj);
};

// The NX environment's value of name (GBK), or nothing when it is not defined.
std::optional<std::string> EnvironmentValue(const std::string& name);

// The user-interface half's part of ResetSession: closes and forgets dialogs, messages,
// selection answers and requests, windows, the dialog script. Called by ResetSession.
void ResetUserInterface();

// GBK <-> UTF-8 for the host's edges. Undecodable input becomes U+FFFD (UTF-8) or "?" (GBK);
// the Strict versions throw std::runtime_error instead (part files: text not representable in
// GBK is an error).
std::string GbkToUtf8(const std::string& gbk);
std::string Utf8ToGbk(const std::string& utf8);
std::string Utf8ToGbkStrict(const std::string& utf8);

// UTF-8 byte by byte, for the host's readers of UTF-8 files: the offset of the first byte that
// does not belong to a well-formed sequence (std::string::npos when every byte does), and a code
// point (at most U+10FFFF) appended as UTF-8.
size_t FirstInvalidUtf8(const std::string& utf8);
void AppendUtf8(std::string& out, unsigned long codePoint);

}  // namespace host
