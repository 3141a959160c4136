#include "platform/windows/forms/prompts.h"

#include "core/text.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/forms/form_host.h"

#include <commdlg.h>

#include <array>
#include <cmath>

namespace quorvane {
namespace {

void Center(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT area{};
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    GetWindowRect(window, &area);
    const RECT& work = monitor.rcWork;
    SetWindowPos(window, nullptr, static_cast<int>(work.left + work.right - (area.right - area.left)) / 2,
                 static_cast<int>(work.top + work.bottom - (area.bottom - area.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// In the word of the program's own boxes.
void NameButton(HWND window) {
    wchar_t word[4]{};
    if (GetDlgItemTextW(window, IDOK, word, 4) > 0 && std::wstring_view(word) == L"OK")
        SetDlgItemTextW(window, IDOK, L"Ok");
}

// What a box of the system's stands in. The forms are blocked by it. Its owner is the window in use or, where
// there is none, a hidden one, so that it has no entry in the task bar; then it opens in the middle of the
// screen.
class Box {
  public:
    explicit Box(WindowsFormHost& host)
        : owner_(host.ActiveWindow())
        , stands_(host.Order()) {
        centered_ = !owner_;
        if (owner_) {
            EnableWindow(owner_, TRUE); // the box switches it off, and on again before it goes
        } else {
            owner_ = host.Events().Window();
        }
        hook_ = SetWindowsHookExW(WH_CBT, Dress, nullptr, GetCurrentThreadId());
    }
    ~Box() { Unhook(); }
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    HWND Owner() const { return owner_; }

  private:
    static void Unhook() {
        if (hook_) UnhookWindowsHookEx(hook_);
        hook_ = nullptr;
    }
    // The first dialogue that becomes active is the box.
    static LRESULT CALLBACK Dress(int code, WPARAM wide, LPARAM low) {
        const HHOOK hook = hook_;
        const HWND window = reinterpret_cast<HWND>(wide);
        wchar_t kind[16]{};
        if (code == HCBT_ACTIVATE && GetClassNameW(window, kind, 16) > 0 &&
            std::wstring_view(kind) == L"#32770") {
            NameButton(window);
            if (centered_) Center(window);
            Unhook();
        }
        return CallNextHookEx(hook, code, wide, low);
    }

    // Of the one box that has not opened yet.
    static inline HHOOK hook_ = nullptr;
    static inline bool centered_ = false;

    HWND owner_;
    QuestionStands stands_;
};

} // namespace

Answer WindowsPrompts::Message(const std::string& text, const std::string& title, int style) {
    const Box frame(host_);
    const int answer = MessageBoxW(frame.Owner(), Wide(text).c_str(), Wide(title).c_str(),
                                   static_cast<UINT>(style) | MB_SETFOREGROUND);
    events_.LeaveIfEnding();
    return answer == IDYES  ? Answer::Yes
           : answer == IDNO ? Answer::No
           : answer == IDOK ? Answer::Ok
                            : Answer::Cancel;
}

std::optional<std::string> WindowsPrompts::File(FileQuestion& question) {
    const Box frame(host_);
    // The system parts the entries of a filter by zeros.
    std::wstring filter = Wide(Replace(question.filter, "|", std::string(1, '\0')));
    filter.append(2, L'\0');
    std::wstring name(32768, L'\0');
    CopyToField(question.name, name.data(), name.size());
    const std::wstring title = Wide(question.title);
    const std::wstring directory = Wide(question.directory);
    OPENFILENAMEW box{};
    box.lStructSize = sizeof box;
    box.hwndOwner = frame.Owner();
    box.lpstrFilter = filter.c_str();
    box.nFilterIndex = static_cast<DWORD>(question.filterIndex);
    box.lpstrFile = name.data();
    box.nMaxFile = static_cast<DWORD>(name.size());
    box.lpstrInitialDir = directory.empty() ? nullptr : directory.c_str();
    box.lpstrTitle = title.c_str();
    // The program's own directory must not wander with the boxes.
    box.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                (question.forSave     ? DWORD{OFN_OVERWRITEPROMPT}
                 : question.mustExist ? DWORD{OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST}
                                      : DWORD{OFN_PATHMUSTEXIST});
    const bool chosen = question.forSave ? GetSaveFileNameW(&box) : GetOpenFileNameW(&box);
    events_.LeaveIfEnding();
    if (!chosen) return std::nullopt;
    question.filterIndex = static_cast<int>(box.nFilterIndex);
    return Utf8(name.c_str());
}

std::optional<FontSpec> WindowsPrompts::Font(const FontSpec& preset) {
    const Box frame(host_);
    LOGFONTW font{};
    font.lfHeight =
        -static_cast<LONG>(std::lround(preset.size * static_cast<float>(host_.DotsPerInch()) / 72));
    font.lfWeight = preset.bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = preset.italic;
    font.lfUnderline = preset.underline;
    font.lfStrikeOut = preset.strikethrough;
    CopyToField(preset.name, font.lfFaceName, LF_FACESIZE);
    CHOOSEFONTW box{};
    box.lStructSize = sizeof box;
    box.hwndOwner = frame.Owner();
    box.lpLogFont = &font;
    box.Flags = CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT;
    const bool chosen = ChooseFontW(&box);
    events_.LeaveIfEnding();
    if (!chosen) return std::nullopt;
    return FontSpec{Utf8(font.lfFaceName),    static_cast<float>(box.iPointSize) / 10,
                    font.lfWeight >= FW_BOLD, font.lfItalic != 0,
                    font.lfUnderline != 0,    font.lfStrikeOut != 0};
}

std::optional<Color> WindowsPrompts::PickColor(Color preset) {
    const Box frame(host_);
    std::array<COLORREF, 16> own{};
    own.fill(RGB(255, 255, 255));
    CHOOSECOLORW box{};
    box.lStructSize = sizeof box;
    box.hwndOwner = frame.Owner();
    box.rgbResult = static_cast<COLORREF>(preset);
    box.lpCustColors = own.data();
    box.Flags = CC_RGBINIT | CC_FULLOPEN;
    const bool chosen = ChooseColorW(&box);
    events_.LeaveIfEnding();
    if (!chosen) return std::nullopt;
    return static_cast<Color>(box.rgbResult);
}

} // namespace quorvane
