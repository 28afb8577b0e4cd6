#include "shell/dialogs/message_box_sink.h"

#include "shell/system/win32.h"

namespace ferrowand {
namespace {

UINT ButtonFlags(Buttons buttons) {
  switch (buttons) {
    case Buttons::YesNo:
      return MB_YESNO;
    case Buttons::YesNoCancel:
      return MB_YESNOCANCEL;
    case Buttons::Ok:
      break;
  }
  return MB_OK;
}

UINT IconFlags(Icon icon) {
  switch (icon) {
    case Icon::Stop:
      return MB_ICONSTOP;
    case Icon::Question:
      return MB_ICONQUESTION;
    case Icon::Warning:
      return MB_ICONWARNING;
    case Icon::Information:
      return MB_ICONINFORMATION;
    case Icon::None:
      break;
  }
  return 0;
}

}  // namespace

Answer MessageBoxSink::Show(const Message& message) {
  const UINT flags = MB_TASKMODAL | ButtonFlags(message.buttons) | IconFlags(message.icon);
  const HWND active = GetActiveWindow();
  const int answer = MessageBoxA(nullptr, message.text.c_str(), message.title.c_str(), flags);
  // The box has no owner for the system to give the keys back to.
  if (active) SetForegroundWindow(active);
  switch (answer) {
    case IDYES:
      return Answer::Yes;
    case IDNO:
      return Answer::No;
    case IDCANCEL:
      return Answer::Cancel;
    default:
      return Answer::Ok;
  }
}

void MessageBoxSink::Beep() {
  MessageBeep(0);
}

void MessageBoxSink::FatalExit(const std::string& text) {
  beforeEnd_();
  FatalAppExitA(0, text.c_str());
}

void MessageBoxSink::Exit(int status) {
  beforeEnd_();
  ExitProcess(static_cast<UINT>(status));
}

}  // namespace ferrowand
