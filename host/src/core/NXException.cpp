// NXException: NX Open's one exception type, derived from std::exception so that a handler for
// std::exception catches NX errors too; what() is Message().
#include <string>

#include <NXOpen/NXException.hxx>

#include "core/UfErrors.hpp"

namespace host::core {

const char* FailMessage(int code) {
    switch (code) {
    case kUfOk: return "";
    case kUfNotInitialized: return "Open API has not been initialized (UF_initialize)";
    case kUfBadTag: return "Invalid object tag";
    case kUfNotAttributeOwner: return "Object cannot have attributes";
    case kUfNullArgument: return "Required argument is NULL";
    case kUfBadAttributeType: return "Invalid attribute type";
    case kUfTitleTooLong: return "Attribute title is longer than 50 bytes";
    case kUfEmptyTitle: return "Attribute title is empty";
    case kUfValueTooLong: return "Attribute string value is longer than 132 bytes";
    case kUfNoWorkPart: return "No work part";
    case kUfBadLayer: return "Layer number must be between 1 and 256";
    case kUfBadLayerStatus: return "Invalid layer status";
    case kUfWorkLayerStatus: return "The status of the work layer cannot be changed";
    case kUfBadBlankStatus: return "Invalid blank status";
    case kUfNotDisplayable: return "Object is not displayable";
    case kUfNotABody: return "Object is not a body";
    case kUfBadMassPropsArguments: return "Invalid arguments for mass properties";
    case kUfUnknownObjectInCycle: return "Object is not on the layer being cycled";
    default: return "Unknown error";
    }
}

}  // namespace host::core

namespace NXOpen {

NXException::NXException() : std::exception(), m_message(), m_errorCode(0) {}
NXException::NXException(int errorCode)
    : std::exception(), m_message(host::core::FailMessage(errorCode)), m_errorCode(errorCode) {}
NXException::NXException(const char* message)
    : std::exception(), m_message(message == nullptr ? "" : message), m_errorCode(0) {}
NXException::NXException(const NXException& other)
    : std::exception(other), m_message(other.m_message), m_errorCode(other.m_errorCode) {}
NXException& NXException::operator=(const NXException& other) {
    m_message = other.m_message;
    m_errorCode = other.m_errorCode;
    return *this;
}
NXException::~NXException() throw() {}

NXException NXException::Create(int errorCode) { return NXException(errorCode); }
NXException NXException::Create(const char* message) { return NXException(message); }
void NXException::ThrowBadTagException() { throw NXException(host::core::kUfBadTag); }
void NXException::ThrowUnexpectedSuccess() { throw NXException("Unexpected success"); }

const char* NXException::Message() const { return m_message.c_str(); }
const char* NXException::GetMessage() const { return Message(); }
const char* NXException::what() const throw() { return Message(); }
int NXException::ErrorCode() const { return m_errorCode; }
int NXException::GetErrorCode() const { return ErrorCode(); }

// Throws a copy of this exception when its code is not the one expected.
void NXException::AssertErrorCode(int code) const {
    if (m_errorCode != code) throw *this;
}

}  // namespace NXOpen
