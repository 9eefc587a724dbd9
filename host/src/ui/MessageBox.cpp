// NXMessageBox: every box is recorded (title, type, text in GBK) in the order shown and handed to
// the driver's listener; the designer's answer to a question box is always the first button.
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

class MessageBoxImpl : public NXOpen::NXMessageBox {
public:
    tag_t tag = Tags::Reserve();
};

std::string Lines(std::vector<NXOpen::NXString>& messages) {
    std::string text;
    for (size_t i = 0; i < messages.size(); ++i) text += (i ? "\n" : "") + std::string(messages[i].GetLocaleText());
    return text;
}

// NX returns the button pressed: 1 (yes) or 2 (no) for a question box, -2 for the others.
int Show(const std::string& title, NXOpen::NXMessageBox::DialogType type, const std::string& text) {
    UiState& s = State();
    s.messages.push_back(MessageRecord{title, type, text});
    if (s.messageListener) s.messageListener(s.messages.back());
    return type == NXOpen::NXMessageBox::DialogTypeQuestion ? 1 : -2;
}

}  // namespace
}  // namespace host::ui

namespace host {

const std::vector<MessageRecord>& Messages() { return ui::State().messages; }

void SetMessageListener(std::function<void(const MessageRecord&)> listener) { ui::State().messageListener = std::move(listener); }

}  // namespace host

namespace NXOpen {

using host::ui::Text;

NXMessageBox* UI::NXMessageBox() {
    HOST_NX_CALL("UI::NXMessageBox");
    static NXOpen::NXMessageBox* box = new host::ui::MessageBoxImpl;
    return box;
}

NXMessageBox::NXMessageBox() {}
NXMessageBox::~NXMessageBox() {}

int NXMessageBox::Show(const NXString& title, DialogType msgboxType, const NXString& message) {
    HOST_NX_CALL("NXMessageBox::Show");
    return host::ui::Show(title.GetLocaleText(), msgboxType, message.GetLocaleText());
}

int NXMessageBox::Show(const char* title, DialogType msgboxType, const char* message) {
    HOST_NX_CALL("NXMessageBox::Show");
    return host::ui::Show(Text(title), msgboxType, Text(message));
}

int NXMessageBox::Show(const NXString& title, DialogType msgboxType, std::vector<NXString>& messages) {
    HOST_NX_CALL("NXMessageBox::Show");
    return host::ui::Show(title.GetLocaleText(), msgboxType, host::ui::Lines(messages));
}

int NXMessageBox::Show(const char* title, DialogType msgboxType, std::vector<NXString>& messages) {
    HOST_NX_CALL("NXMessageBox::Show");
    return host::ui::Show(Text(title), msgboxType, host::ui::Lines(messages));
}

tag_t NXMessageBox::Tag() const { HOST_NX_CALL("NXMessageBox::Tag"); return static_cast<const host::ui::MessageBoxImpl*>(this)->tag; }

}  // namespace NXOpen
