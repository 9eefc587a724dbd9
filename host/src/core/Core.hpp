// The session core's internals: what the core's source files share. The user-interface half and
// the driver see only HostSession.hpp and Driver.hpp.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Driver.hpp"
#include "platform/Desktop.h"

namespace host::core {

class PartImpl;

// Everything ResetSession returns to its start.
struct SessionState {
    std::map<std::string, std::string> environment;  // NX environment, GBK name -> GBK value
    int modelUpdates = 0;
    bool ufInitialized = false;
    bool listingOpen = false;
    std::vector<std::string> listingLines;  // ListingWindow::WriteLine, GBK
    std::vector<std::string> syslogLines;   // UF_print_syslog
    std::unique_ptr<PartImpl> workPart;
    std::optional<platform::LocalTime> pinnedClock;
    int clockStepMilliseconds = 0;  // how far each read moves the pinned clock on
    std::vector<std::string> openedFiles;
    bool reallyOpenFiles = false;
    std::vector<RefusedAttribute> refusedAttributes;
    std::vector<std::string> uninitializedCalls;  // user-function calls made before UF_initialize
};

SessionState& State();

// NX refuses a user-function call before UF_initialize (and after UF_terminate) with
// UF_err_program_not_initialized; the host does the same and notes the call (by name).
// 0 when the library is initialised.
int RequireInitialized(const char* call);

// The work part, or NULL.
PartImpl* WorkPartImpl();

}  // namespace host::core
