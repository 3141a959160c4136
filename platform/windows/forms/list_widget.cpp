#include "platform/windows/base/wide.h"
#include "platform/windows/forms/widget.h"

#include <algorithm>
#include <utility>

#include <windowsx.h>

namespace quorvane {
namespace {

// A list that holds no rows: it asks for those that it paints, so that a long list costs no more than a short
// one. What the system does for rows of its own, boxes and finding by letters, is done here.
class ListWidget final : public Widget {
  public:
    ListWidget(WidgetSite& site, ListView& model)
        : Widget(site, model, WC_LISTVIEWW,
                 WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_OWNERDATA,
                 WS_EX_CLIENTEDGE)
        , list_(model) {
        SendMessageW(window_, LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
        ListView_SetItemCountEx(window_, list_.RowCount(), 0);
    }

    void ShowCaption() override {}
    void ShowItems() override {
        DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
        if (list_.CheckBoxes()) extended |= LVS_EX_CHECKBOXES;
        ListView_SetExtendedListViewStyle(window_, extended);
        RescaleColumns();
        ShowColumns();
        InvalidateRect(window_, nullptr, TRUE);
    }
    void ShowRows(const RowChange& change) override {
        if (change.removed != change.inserted) {
            ListView_SetItemCountEx(window_, list_.RowCount(), LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
            RedrawFrom(change.first);
        } else if (change.inserted > 0) {
            ListView_RedrawItems(window_, change.first, change.first + change.inserted - 1);
        }
        ShowChosen(false);
    }
    void ShowValue() override { ShowChosen(true); }

    LRESULT OnNotify(NMHDR& header) override {
        switch (header.code) {
        case LVN_GETDISPINFOW:
            Tell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case LVN_ODFINDITEMW:
            return Search(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            const bool chosen = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
            if (chosen && change.iItem >= 0) Report(act::Choose{change.iItem});
            return 0;
        }
        case NM_CLICK:
        case NM_RCLICK:
            LookAtCaret();
            return 0;
        default:
            return 0;
        }
    }
    // A person has let the chosen row go.
    void LookAtCaret() override {
        if (Chosen() < 0 && list_.SelectedRow() >= 0) Report(act::Choose{-1});
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wide, LPARAM low) override {
        if (!list_.CheckBoxes()) return std::nullopt;
        if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
            LVHITTESTINFO hit{};
            hit.pt = {GET_X_LPARAM(low), GET_Y_LPARAM(low)};
            SendMessageW(window_, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
            if (hit.iItem < 0 || !(hit.flags & LVHT_ONITEMSTATEICON)) return std::nullopt;
            SetFocus(window_);
            Tick(hit.iItem);
            return 0;
        }
        if (wide != VK_SPACE || (message != WM_KEYDOWN && message != WM_CHAR)) return std::nullopt;
        if (message == WM_KEYDOWN) Tick(ListView_GetNextItem(window_, -1, LVNI_FOCUSED));
        return 0;
    }

  private:
    int Chosen() const { return ListView_GetNextItem(window_, -1, LVNI_SELECTED); }

    void ShowChosen(bool inSight) {
        const int shown = Chosen();
        const int wanted = list_.SelectedRow();
        if (shown == wanted) return;
        constexpr UINT State = LVIS_SELECTED | LVIS_FOCUSED;
        if (shown >= 0) ListView_SetItemState(window_, shown, 0, State);
        if (wanted < 0) return;
        ListView_SetItemState(window_, wanted, State, State);
        if (inSight) ListView_EnsureVisible(window_, wanted, FALSE);
    }

    // What can be seen from that row on.
    void RedrawFrom(int row) {
        RECT area{};
        GetClientRect(window_, &area);
        const int top = ListView_GetTopIndex(window_);
        RECT place{};
        if (row > top && row < list_.RowCount() && ListView_GetItemRect(window_, row, &place, LVIR_BOUNDS))
            area.top = place.top;
        if (area.top < area.bottom) InvalidateRect(window_, &area, TRUE);
    }

    void Tick(int row) {
        if (row < 0 || row >= list_.RowCount()) return;
        Report(act::Check{!list_.Rows()[static_cast<std::size_t>(row)].checked, row});
    }

    // The system asks for a row's text or box. It reads the text before it asks again.
    void Tell(LVITEMW& item) {
        if (item.iItem < 0 || item.iItem >= list_.RowCount()) return;
        const ListView::RowData& row = list_.Rows()[static_cast<std::size_t>(item.iItem)];
        if (item.mask & LVIF_TEXT) {
            const auto column = static_cast<std::size_t>(item.iSubItem);
            told_ = column < row.cells.size() ? Wide(row.cells[column]) : std::wstring();
            item.pszText = told_.data();
        }
        if ((item.mask & LVIF_STATE) && list_.CheckBoxes() && item.iSubItem == 0) {
            item.stateMask |= LVIS_STATEIMAGEMASK;
            item.state |= INDEXTOSTATEIMAGEMASK(row.checked ? 2U : 1U);
        }
    }

    // The row that begins with the letters typed, from the one asked for on and round; -1 for none.
    int Search(const NMLVFINDITEMW& search) const {
        if (!(search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !search.lvfi.psz) return -1;
        const std::wstring wanted = search.lvfi.psz;
        const int count = list_.RowCount();
        for (int step = 0; step < count; ++step) {
            const int row = (std::max(search.iStart, 0) + step) % count;
            const auto& cells = list_.Rows()[static_cast<std::size_t>(row)].cells;
            const std::wstring text = cells.empty() ? std::wstring() : Wide(cells[0]);
            if (_wcsnicmp(text.c_str(), wanted.c_str(), wanted.size()) == 0) return row;
        }
        return -1;
    }

    // The columns' widths are pixels, those that the person gave them as well.
    void RescaleColumns() {
        const TwipScale before = std::exchange(shownScale_, site_.Scale());
        if (before.x == shownScale_.x) return;
        for (int column = 0; column < static_cast<int>(shownColumns_.size()); ++column) {
            const int width = before.TwipsX(ListView_GetColumnWidth(window_, column));
            ListView_SetColumnWidth(window_, column, shownScale_.PixelsX(width));
        }
    }

    // A column that stays as it was keeps the width that the person gave it.
    void ShowColumns() {
        const std::vector<ListView::Column>& wanted = list_.Columns();
        while (shownColumns_.size() > wanted.size()) {
            shownColumns_.pop_back();
            ListView_DeleteColumn(window_, static_cast<int>(shownColumns_.size()));
        }
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const bool fresh = i >= shownColumns_.size();
            LVCOLUMNW data{};
            data.mask = LVCF_SUBITEM;
            data.iSubItem = static_cast<int>(i);
            std::wstring caption = Wide(wanted[i].caption.Text());
            if (fresh || shownColumns_[i].caption != wanted[i].caption) data.mask |= LVCF_TEXT;
            if (fresh || shownColumns_[i].width != wanted[i].width) data.mask |= LVCF_WIDTH;
            data.pszText = caption.data();
            data.cx = site_.Scale().PixelsX(wanted[i].width);
            if (data.mask == LVCF_SUBITEM) continue;
            SendMessageW(window_, fresh ? LVM_INSERTCOLUMNW : LVM_SETCOLUMNW, i,
                         reinterpret_cast<LPARAM>(&data));
        }
        shownColumns_ = wanted;
    }

    ListView& list_;
    std::vector<ListView::Column> shownColumns_;
    TwipScale shownScale_ = site_.Scale();
    std::wstring told_;
};

} // namespace

void WidgetMaker::Visit(ListView& control) {
    made = std::make_unique<ListWidget>(site_, control);
}

} // namespace quorvane
