#include "platform/forms/form.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/forms/widget.h"

#include <algorithm>

namespace quorvane {
namespace {

class TextWidget final : public Widget {
  public:
    TextWidget(WidgetSite& site, TextControl& model)
        : Widget(site, model, WC_EDITW,
                 WS_TABSTOP | (model.OwnerForm().RightToLeft() ? ES_RIGHT : 0U) |
                     (model.MultiLine() ? ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL
                                        : DWORD{ES_AUTOHSCROLL}),
                 WS_EX_CLIENTEDGE)
        , text_(model) {
        SendMessageW(window_, EM_SETLIMITTEXT, 0, 0);
        // A mirrored box would count its letters' places from the wrong side.
        Unmirror(WS_EX_RIGHT | WS_EX_RTLREADING | WS_EX_LEFTSCROLLBAR);
    }

    void ShowCaption() override {}
    void ShowValue() override {
        SendMessageW(window_, EM_SETREADONLY, text_.ReadOnly(), 0);
        SetText(text_.Text());
        const WPARAM start = Letters(text_.SelectionStart());
        const LPARAM end = static_cast<LPARAM>(Letters(text_.SelectionStart() + text_.SelectionLength()));
        DWORD shownStart = 0;
        DWORD shownEnd = 0;
        SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&shownStart),
                     reinterpret_cast<LPARAM>(&shownEnd));
        if (shownStart != start || static_cast<LPARAM>(shownEnd) != end) {
            SendMessageW(window_, EM_SETSEL, start, end);
            SendMessageW(window_, EM_SCROLLCARET, 0, 0);
        }
    }
    void OnCommand(WORD code) override {
        if (code != EN_CHANGE) return;
        const std::string text = WindowText();
        if (text == text_.Text()) return;
        const act::Select selection = Selection(text);
        Report(act::Type{text, selection.caret, selection.selectionLength});
    }
    void LookAtCaret() override {
        const std::string text = WindowText();
        if (text != text_.Text()) return;
        const act::Select selection = Selection(text);
        if (selection.caret != text_.SelectionStart() ||
            selection.selectionLength != text_.SelectionLength()) {
            Report(selection);
        }
    }
    bool Keeps(int code) const override { return code == VK_RETURN && text_.MultiLine(); }

  private:
    // The model counts in bytes of UTF-8, the widget in letters of UTF-16.
    WPARAM Letters(int bytes) const {
        return Wide(std::string_view(text_.Text()).substr(0, static_cast<std::size_t>(bytes))).size();
    }
    act::Select Selection(const std::string& text) const {
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const std::wstring wide = Wide(text);
        const auto bytes = [&wide](DWORD letters) {
            return static_cast<int>(Utf8(std::wstring_view(wide).substr(0, letters)).size());
        };
        return {bytes(start), bytes(end) - bytes(start)};
    }

    TextControl& text_;
};

class ComboWidget final : public Widget {
  public:
    ComboWidget(WidgetSite& site, ComboBox& model)
        : Widget(site, model, WC_COMBOBOXW,
                 WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL |
                     (model.Editable() ? DWORD{CBS_DROPDOWN} : DWORD{CBS_DROPDOWNLIST}))
        , combo_(model) {}

    void ShowCaption() override {}
    void ShowItems() override {
        SendMessageW(window_, CB_RESETCONTENT, 0, 0);
        for (const Words& item : combo_.Items()) {
            SendMessageW(window_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item.Text()).c_str()));
        }
        ShowValue();
    }
    void ShowValue() override {
        if (SendMessageW(window_, CB_GETCURSEL, 0, 0) != combo_.ListIndex())
            SendMessageW(window_, CB_SETCURSEL, static_cast<WPARAM>(combo_.ListIndex()), 0);
        if (combo_.Editable()) SetText(combo_.Text());
    }
    void Place(const PixelRect& area) override {
        // The height given to the system is that of the open box; the closed one follows its edit line.
        constexpr int OpenLines = 12;
        constexpr int Borders = 6;
        SendMessageW(window_, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(area.height - Borders, 8));
        Widget::Place({area.x, area.y, area.width, area.height * OpenLines});
    }
    void OnCommand(WORD code) override {
        if (code == CBN_SELCHANGE) {
            Report(act::Choose{static_cast<int>(SendMessageW(window_, CB_GETCURSEL, 0, 0))});
        } else if (code == CBN_EDITCHANGE) {
            const std::string text = WindowText();
            Report(act::Type{text, static_cast<int>(text.size()), 0});
        } else if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS) {
            if (combo_.Editable()) Report(act::Focus{code == CBN_SETFOCUS});
        }
    }
    bool Keeps(int code) const override {
        return (code == VK_RETURN || code == VK_ESCAPE) && SendMessageW(window_, CB_GETDROPPEDSTATE, 0, 0);
    }

  private:
    ComboBox& combo_;
};

} // namespace

void WidgetMaker::Visit(TextBox& control) {
    made = std::make_unique<TextWidget>(site_, control);
}

void WidgetMaker::Visit(RichTextBox& control) {
    made = std::make_unique<TextWidget>(site_, control);
}

void WidgetMaker::Visit(ComboBox& control) {
    made = std::make_unique<ComboWidget>(site_, control);
}

} // namespace quorvane
