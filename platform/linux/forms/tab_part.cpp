#include "platform/linux/forms/parts_detail.h"

#include <QFrame>
#include <QKeyEvent>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {

namespace {

// One row of a strip's tabs. A toolkit's bar always has a current tab: where the selected one stands in
// another row, that is an empty one at the end, which has no size and which nobody can reach.
class RowBar final : public QTabBar {
  public:
    RowBar(QWidget* parent, std::function<void(int)> step)
        : QTabBar(parent)
        , step_(std::move(step)) {
        setDrawBase(false);
        setExpanding(false);
        setUsesScrollButtons(true);
        setElideMode(Qt::ElideNone);
    }

    // The tabs from `first` up to but not `last`.
    void Fill(const std::vector<Words>& captions, int first, int last) {
        tabs_ = last - first;
        while (count() > tabs_ + 1)
            removeTab(count() - 1);
        while (count() < tabs_ + 1)
            addTab(QString());
        for (int i = 0; i < tabs_; ++i) {
            setTabEnabled(i, true);
            setTabText(i, ToWidgetText(captions[static_cast<std::size_t>(first + i)].Text()));
        }
        setTabText(tabs_, QString());
        setTabEnabled(tabs_, false);
    }
    int Tabs() const { return tabs_; }
    // `tab` is none of this row's where it lies outside.
    void Select(int tab) {
        const bool own = tab >= 0 && tab < tabs_;
        setCurrentIndex(own ? tab : tabs_);
        setFocusPolicy(own ? Qt::TabFocus : Qt::NoFocus);
    }

  protected:
    QSize tabSizeHint(int index) const override {
        const QSize size = QTabBar::tabSizeHint(index);
        return index < tabs_ ? size : QSize(0, size.height());
    }
    QSize minimumTabSizeHint(int index) const override {
        const QSize size = QTabBar::minimumTabSizeHint(index);
        return index < tabs_ ? size : QSize(0, size.height());
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Left && event->key() != Qt::Key_Right)
            return QTabBar::keyPressEvent(event);
        step_((event->key() == Qt::Key_Right) != isRightToLeft() ? 1 : -1);
    }

  private:
    std::function<void(int)> step_;
    int tabs_ = 0;
};

// Rows of tabs above a pane, that of the selected tab the lowest.
class TabPart final : public PartOf<TabStrip, QWidget> {
  public:
    TabPart(TabStrip& control, QWidget* parent, QObject* context, PartMaker::Report report)
        : PartOf(control, parent)
        , context_(context)
        , report_(std::move(report))
        , column_(new QVBoxLayout(widget_))
        , pane_(new QFrame(widget_)) {
        column_->setContentsMargins(0, 0, 0, 0);
        column_->setSpacing(0);
        column_->addWidget(pane_, 1);
        pane_->setFrameShape(QFrame::StyledPanel);
    }
    QWidget* Inside() const override { return pane_; }
    void ShowItems() override {
        const std::vector<int>& rows = control_.TabRows();
        while (bars_.size() > rows.size()) {
            bars_.back()->deleteLater(); // possibly in the middle of telling
            bars_.back()->hide();
            bars_.pop_back();
        }
        while (bars_.size() < rows.size())
            AddBar();
        int first = 0;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            bars_[row]->Fill(control_.Tabs(), first, first + rows[row]);
            first += rows[row];
        }
        ShowValue();
    }
    void ShowCaption() override { ShowItems(); }
    void ShowValue() override {
        int first = 0;
        RowBar* chosen = nullptr;
        const bool focused = HasFocus();
        for (RowBar* bar : bars_) {
            const int tab = control_.SelectedTab() - first;
            bar->Select(tab);
            if (tab >= 0 && tab < bar->Tabs()) chosen = bar;
            first += bar->Tabs();
        }
        if (!chosen) return;
        widget_->setFocusProxy(chosen);
        if (focused && !chosen->hasFocus()) chosen->setFocus();
        column_->removeWidget(chosen);
        column_->insertWidget(column_->count() - 1, chosen);
    }

  private:
    bool HasFocus() const {
        return std::any_of(bars_.begin(), bars_.end(), [](const RowBar* bar) { return bar->hasFocus(); });
    }

    void AddBar() {
        auto* bar = new RowBar(widget_, [this](int by) {
            const int last = static_cast<int>(control_.Tabs().size()) - 1;
            report_(control_, act::Choose{std::clamp(control_.SelectedTab() + by, 0, last)});
        });
        QObject::connect(bar, &QTabBar::currentChanged, context_, [this, bar](int index) {
            if (index >= 0 && index < bar->Tabs()) report_(control_, act::Choose{FirstOf(bar) + index});
        });
        bars_.push_back(bar);
        column_->insertWidget(column_->count() - 1, bar);
    }
    int FirstOf(const RowBar* bar) const {
        int first = 0;
        for (const RowBar* each : bars_) {
            if (each == bar) break;
            first += each->Tabs();
        }
        return first;
    }

    QObject* context_;
    PartMaker::Report report_;
    QVBoxLayout* column_;
    QFrame* pane_;
    std::vector<RowBar*> bars_;
};

} // namespace

void PartMaker::Visit(TabStrip& control) {
    part = std::make_unique<TabPart>(control, parent_, context_, report_);
}

} // namespace quorvane
