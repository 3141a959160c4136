#include "platform/linux/forms/parts.h"

#include "platform/linux/forms/parts_detail.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFrame>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <algorithm>
#include <cstring>

namespace quorvane {

namespace {

class LabelPart final : public PartOf<Label, QLabel> {
  public:
    LabelPart(Label& control, QWidget* parent)
        : PartOf(control, parent) {
        widget_->setTextFormat(Qt::PlainText);
    }
    // The mark of a mnemonic means something to a label that leads to another widget, and to no other.
    void ShowCaption() override {
        const std::string& caption = control_.Caption();
        const bool leads = widget_->buddy() != nullptr;
        widget_->setText(ToWidgetText(leads ? caption : PlainCaption(caption)));
    }
    void ShowLook() override {
        const bool wraps = control_.WrapWidth() > 0;
        widget_->setWordWrap(wraps);
        widget_->setAlignment((wraps ? Qt::AlignTop : Qt::AlignVCenter) | Across());
    }

  private:
    // By the form's direction. Left to itself, the toolkit takes that of each text.
    Qt::Alignment Across() const {
        if (control_.Alignment() == Label::Align::Center) return Qt::AlignHCenter;
        const bool left = (control_.Alignment() == Label::Align::Left) != widget_->isRightToLeft();
        return (left ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute;
    }
};

// Kinds whose caption is the widget's text.
template<typename Kind, typename Shown>
class CaptionPart : public PartOf<Kind, Shown> {
  public:
    using PartOf<Kind, Shown>::PartOf;
    void ShowCaption() override { this->widget_->setText(ToWidgetText(this->control_.Caption())); }
};

using ButtonPart = CaptionPart<Button, QPushButton>;

// Check boxes and option buttons.
template<typename Kind, typename Shown>
class CheckPart final : public CaptionPart<Kind, Shown> {
  public:
    using CaptionPart<Kind, Shown>::CaptionPart;
    void ShowValue() override { this->widget_->setChecked(this->control_.Value()); }
};

class FramePart final : public PartOf<Frame, QGroupBox> {
  public:
    using PartOf::PartOf;
    void ShowCaption() override { widget_->setTitle(ToWidgetText(control_.Caption())); }
};

// Sliders, scroll bars and progress bars.
template<typename Kind, typename Shown>
class RangePart final : public PartOf<Kind, Shown> {
  public:
    using PartOf<Kind, Shown>::PartOf;
    void ShowItems() override { this->widget_->setRange(this->control_.Minimum(), this->control_.Maximum()); }
    void ShowValue() override { this->widget_->setValue(this->control_.Value()); }
};

void SetSteps(QAbstractSlider& widget, const RangeControl& control) {
    widget.setPageStep(std::max(1, (control.Maximum() - control.Minimum()) / 10));
}

QDate ToQDate(const DateTime& value) {
    return {value.year, value.month, value.day};
}

class DatePart final : public PartOf<DatePicker, QDateTimeEdit> {
  public:
    DatePart(DatePicker& control, QWidget* parent)
        : PartOf(control, parent) {
        widget_->setLayoutDirection(Qt::LeftToRight); // or the parts of the date would change places
        widget_->setDisplayFormat("dd.MM.yyyy HH:mm:ss");
        widget_->setCalendarPopup(true);
        widget_->setMinimumDate({1753, 1, 1});
        widget_->setTimeSpec(Qt::UTC); // a picker's date has no gaps of summer time
    }
    void ShowValue() override {
        const DateTime& value = control_.Value();
        widget_->setDateTime({ToQDate(value), {value.hour, value.minute, value.second}, Qt::UTC});
    }
};

class MonthPart final : public PartOf<MonthView, QCalendarWidget> {
  public:
    MonthPart(MonthView& control, QWidget* parent)
        : PartOf(control, parent) {
        widget_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        widget_->setGridVisible(false);
        widget_->setMinimumDate({1753, 1, 1});
    }
    void ShowValue() override { widget_->setSelectedDate(ToQDate(control_.Value())); }
};

// Shows the pixels of a surface as they were when it was last told to.
class CanvasWidget final : public QFrame {
  public:
    using QFrame::QFrame;

    void Take(Surface* surface) {
        if (surface) {
            const PixelView view = surface->Pixels();
            image_ = QImage(view.size.width, view.size.height, QImage::Format_BGR888);
            for (int y = 0; y < view.size.height; ++y) {
                std::memcpy(image_.scanLine(y), view.Row(y), static_cast<std::size_t>(view.size.width) * 3);
            }
        }
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (!image_.isNull()) QPainter(this).drawImage(rect(), image_); // pixel by pixel of the screen
        QFrame::paintEvent(event);
    }

  private:
    QImage image_;
};

class PicturePart final : public PartOf<PictureBox, CanvasWidget> {
  public:
    using PartOf::PartOf;
    void ShowValue() override { widget_->Take(control_.Painted()); }
    void ShowLook() override {
        widget_->setFrameShape(control_.HasBorder() ? QFrame::StyledPanel : QFrame::NoFrame);
    }
};

} // namespace

void PartMaker::Visit(Label& control) {
    part = std::make_unique<LabelPart>(control, parent_);
}

void PartMaker::Visit(Button& control) {
    auto made = std::make_unique<ButtonPart>(control, parent_);
    QObject::connect(made->Shown(), &QPushButton::clicked, context_,
                     [report = report_, &control] { report(control, act::Click{}); });
    part = std::move(made);
}

void PartMaker::Visit(CheckBox& control) {
    auto made = std::make_unique<CheckPart<CheckBox, QCheckBox>>(control, parent_);
    QObject::connect(made->Shown(), &QCheckBox::clicked, context_,
                     [report = report_, &control](bool checked) { report(control, act::Check{checked}); });
    part = std::move(made);
}

// The model clears the other options of a group; a widget alone would only know its siblings.
void PartMaker::Visit(OptionButton& control) {
    auto made = std::make_unique<CheckPart<OptionButton, QRadioButton>>(control, parent_);
    QRadioButton* widget = made->Shown();
    widget->setAutoExclusive(false);
    QObject::connect(widget, &QRadioButton::clicked, context_, [report = report_, widget, &control] {
        if (!widget->isChecked()) widget->setChecked(true);
        report(control, act::Check{true});
    });
    part = std::move(made);
}

void PartMaker::Visit(Frame& control) {
    part = std::make_unique<FramePart>(control, parent_);
}

namespace {

void ReportSliding(QAbstractSlider* widget, QObject* context, const PartMaker::Report& report,
                   RangeControl& control) {
    QObject::connect(widget, &QAbstractSlider::valueChanged, context, [report, widget, &control](int value) {
        report(control, act::Slide{value, widget->isSliderDown()});
    });
    QObject::connect(widget, &QAbstractSlider::sliderReleased, context, [report, widget, &control] {
        report(control, act::Slide{widget->value(), false});
    });
    SetSteps(*widget, control);
}

} // namespace

void PartMaker::Visit(Slider& control) {
    auto made = std::make_unique<RangePart<Slider, QSlider>>(control, parent_);
    made->Shown()->setOrientation(Qt::Horizontal);
    ReportSliding(made->Shown(), context_, report_, control);
    part = std::move(made);
}

void PartMaker::Visit(ScrollBar& control) {
    auto made = std::make_unique<RangePart<ScrollBar, QScrollBar>>(control, parent_);
    made->Shown()->setOrientation(control.Vertical() ? Qt::Vertical : Qt::Horizontal);
    made->Shown()->setFocusPolicy(Qt::StrongFocus);
    made->Shown()->setInvertedControls(control.Vertical()); // the left arrow goes to the left
    ReportSliding(made->Shown(), context_, report_, control);
    part = std::move(made);
}

void PartMaker::Visit(ProgressBar& control) {
    auto made = std::make_unique<RangePart<ProgressBar, QProgressBar>>(control, parent_);
    made->Shown()->setTextVisible(false);
    part = std::move(made);
}

void PartMaker::Visit(DatePicker& control) {
    auto made = std::make_unique<DatePart>(control, parent_);
    QObject::connect(made->Shown(), &QDateTimeEdit::dateTimeChanged, context_,
                     [report = report_, &control](const QDateTime& value) {
                         const QDate day = value.date();
                         const QTime time = value.time();
                         report(control, act::PickDate{{day.year(), day.month(), day.day(), time.hour(),
                                                        time.minute(), time.second()}});
                     });
    part = std::move(made);
}

void PartMaker::Visit(MonthView& control) {
    auto made = std::make_unique<MonthPart>(control, parent_);
    QCalendarWidget* widget = made->Shown();
    QObject::connect(widget, &QCalendarWidget::selectionChanged, context_,
                     [report = report_, widget, &control] {
                         const QDate day = widget->selectedDate();
                         report(control, act::PickDate{{day.year(), day.month(), day.day()}});
                     });
    part = std::move(made);
}

void PartMaker::Visit(PictureBox& control) {
    part = std::make_unique<PicturePart>(control, parent_);
}

} // namespace quorvane
