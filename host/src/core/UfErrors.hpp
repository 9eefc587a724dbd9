// The error codes the host's user-function calls return, and their texts. Where NX 8.5 defines a
// code for the same failure (uf_error_bases.h) the host returns NX's number; the others are the
// host's own, from 900001 (docs/host.md lists both).
#pragma once

namespace host::core {

enum UfError {
    kUfOk = 0,
    // NX 8.5's own codes (uf_error_bases.h, ERROR_UF_base 1105000).
    kUfNotInitialized = 1105000,  // UF_err_program_not_initialized: a call before UF_initialize
    kUfNoWorkPart = 1105025,      // UF_err_no_work_part
    kUfTitleTooLong = 1105034,    // UF_err_attr_title_too_big: over UF_ATTR_MAX_TITLE_LEN bytes
    kUfValueTooLong = 1105035,    // UF_err_attr_value_too_big: over UF_ATTR_MAX_STRING_LEN bytes
    kUfNullArgument = 1105058,    // UF_err_input_is_null: a required pointer is NULL
    // The host's own: NX names no code for these failures.
    kUfBadTag = 900001,          // no object has this tag
    kUfNotAttributeOwner,        // the object cannot carry attributes
    kUfBadAttributeType = 900004,  // not a UF_ATTR_* type the call accepts
    kUfEmptyTitle = 900006,      // title of no characters
    kUfBadLayer = 900009,        // layer number outside 1..256
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
