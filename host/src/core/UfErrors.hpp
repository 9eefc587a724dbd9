// The error codes the host's user-function calls return, and their texts. NX's own codes are
// not published per call; these are the host's (docs/host.md lists them).
#pragma once

namespace host::core {

enum UfError {
    kUfOk = 0,
    kUfBadTag = 900001,          // no object has this tag
    kUfNotAttributeOwner,        // the object cannot carry attributes
    kUfNullArgument,             // a required pointer is NULL
    kUfBadAttributeType,         // not a UF_ATTR_* type the call accepts
    kUfTitleTooLong,             // title longer than UF_ATTR_MAX_TITLE_LEN bytes
    kUfEmptyTitle,               // title of no characters
    kUfValueTooLong,             // string longer than UF_ATTR_MAX_STRING_LEN bytes
    kUfNoWorkPart,               // the call needs a work part
    kUfBadLayer,                 // layer number outside 1..256
    kUfBadLayerStatus,           // not a UF_LAYER_* status the call accepts
    kUfWorkLayerStatus,          // the work layer's status changes only by making another layer work
    kUfBadBlankStatus,           // neither UF_OBJ_BLANKED nor UF_OBJ_NOT_BLANKED
    kUfNotDisplayable,           // the object has no display properties
    kUfNotABody,                 // mass properties asked of something that is not a body
    kUfBadMassPropsArguments,    // object count, type or units the call does not accept
    kUfUnknownObjectInCycle      // UF_LAYER_cycle_by_layer was given an object that is no body of the work part
};

// The text of a code ("" for kUfOk; a generic text for codes the host does not use).
const char* FailMessage(int code);

}  // namespace host::core
