#include "platform/windows/base/wide.h"
#include "platform/windows/forms/form_view.h"
#include "platform/windows/forms/widget.h"

#include <algorithm>

namespace quorvane {
namespace {

// A native strip for each row of tabs, that of the selected tab the lowest. The pane below is an outline with
// the form's own ground, so that controls on it need no colour of their own.
class TabWidget final : public Widget {
  public:
    TabWidget(WidgetSite& site, TabStrip& model)
        : Widget(site, model, WC_TABCONTROLW, Style)
        , tabs_(model)
        , rows_{{window_, 0, 0}}
        , pane_(CreateWindowExW(0, WindowsFormView::PaneClass, L"", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                                site.Window(), nullptr, GetModuleHandleW(nullptr), nullptr)) {}

    void ShowCaption() override { ShowItems(); }
    void ShowItems() override {
        const std::vector<int>& wanted = tabs_.TabRows();
        while (rows_.size() < wanted.size())
            AddRow();
        int first = 0;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const int count = i < wanted.size() ? wanted[i] : 0; // a row too many stays, empty and unseen
            Fill(rows_[i], first, count);
            first += count;
        }
        ShowValue();
        ShowState(reachable_, shown_);
    }
    void ShowValue() override {
        const HWND focus = GetFocus();
        for (const Row& row : rows_) {
            const bool own = row.Holds(tabs_.SelectedTab());
            const int wanted = own ? tabs_.SelectedTab() - row.first : -1;
            if (TabCtrl_GetCurSel(row.window) != wanted) TabCtrl_SetCurSel(row.window, wanted);
            if (own) window_ = row.window;
        }
        PlaceRows();
        const bool hadFocus =
            std::any_of(rows_.begin(), rows_.end(), [focus](const Row& row) { return row.window == focus; });
        if (hadFocus && focus != window_) SetFocus(window_);
    }
    // After captions, too, have come into their font.
    void ShowLook() override {
        const auto font = static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0));
        for (const Row& row : rows_) {
            if (row.window != window_) SendMessageW(row.window, WM_SETFONT, font, TRUE);
        }
    }
    void ShowState(bool reachable, bool shown) override {
        reachable_ = reachable;
        shown_ = shown;
        for (const Row& row : rows_) {
            EnableWindow(row.window, reachable);
            ShowWindow(row.window, shown && (row.count > 0 || rows_.size() == 1) ? SW_SHOWNA : SW_HIDE);
        }
        ShowWindow(pane_, shown ? SW_SHOWNA : SW_HIDE);
    }
    void Place(const PixelRect& area) override {
        area_ = area;
        PlaceRows();
    }
    LRESULT OnNotify(NMHDR& header) override {
        const auto row = std::find_if(rows_.begin(), rows_.end(),
                                      [&](const Row& each) { return each.window == header.hwndFrom; });
        if (row == rows_.end()) return 0;
        if (header.code == TCN_SELCHANGE) {
            const int tab = TabCtrl_GetCurSel(row->window);
            if (tab >= 0) Report(act::Choose{row->first + tab});
        } else if (header.code == TCN_KEYDOWN) {
            LeaveRow(*row, reinterpret_cast<const NMTCKEYDOWN&>(header).wVKey);
        }
        return 0;
    }

  private:
    static constexpr DWORD Style = WS_TABSTOP | TCS_FOCUSONBUTTONDOWN;

    struct Row {
        HWND window;
        int first; // tab
        int count;
        bool Holds(int tab) const { return tab >= first && tab < first + count; }
    };

    void AddRow() {
        const HWND window =
            CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_CLIPSIBLINGS | Style, 0, 0, 0, 0,
                            site_.Window(), nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowPos(window, rows_.back().window, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)), FALSE);
        rows_.push_back({window, 0, 0});
        site_.Join(*this, window);
    }

    void Fill(Row& row, int first, int count) {
        row.first = first;
        row.count = count;
        TabCtrl_DeleteAllItems(row.window);
        for (int i = 0; i < count; ++i) {
            std::wstring text = Wide(tabs_.Tabs()[static_cast<std::size_t>(first + i)].Text());
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = text.data();
            SendMessageW(row.window, TCM_INSERTITEMW, static_cast<WPARAM>(i),
                         reinterpret_cast<LPARAM>(&item));
        }
    }

    void PlaceRows() {
        RECT inner{0, 0, area_.width, area_.height};
        TabCtrl_AdjustRect(window_, FALSE, &inner);
        const int height = std::clamp(static_cast<int>(inner.top) - 1, 8, std::max(area_.height, 8));
        int y = area_.y;
        const auto place = [&](const Row& row) {
            SetWindowPos(row.window, nullptr, area_.x, y, area_.width, height, SWP_NOZORDER | SWP_NOACTIVATE);
            y += height;
        };
        for (const Row& row : rows_) {
            if (row.window != window_ && row.count > 0) place(row);
        }
        for (const Row& row : rows_) {
            if (row.window == window_) place(row);
        }
        SetWindowPos(pane_, rows_.back().window, area_.x, y - 1, area_.width,
                     std::max(area_.y + area_.height - y + 1, 0), SWP_NOACTIVATE);
    }

    // An arrow at the end of a row leads into the next one.
    void LeaveRow(const Row& row, int key) {
        const int tab = tabs_.SelectedTab();
        int next = -1;
        if (key == VK_RIGHT && tab == row.first + row.count - 1) next = tab + 1;
        if (key == VK_LEFT && tab == row.first) next = tab - 1;
        if (next >= 0 && next < static_cast<int>(tabs_.Tabs().size())) Report(act::Choose{next});
    }

    TabStrip& tabs_;
    std::vector<Row> rows_; // from the upper one on
    HWND pane_;
    PixelRect area_;
    bool reachable_ = true;
    bool shown_ = false;
};

} // namespace

void WidgetMaker::Visit(TabStrip& control) {
    made = std::make_unique<TabWidget>(site_, control);
}

} // namespace quorvane
