#include "platform/linux/forms/form_host.h"

#include "platform/linux/drawing/font.h"
#include "platform/linux/forms/form_view.h"
#include "platform/linux/forms/qt_text.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLineEdit>
#include <QMargins>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionGroupBox>
#include <QTabBar>
#include <QTreeWidget>
#include <algorithm>

namespace quorvane {

namespace {

// Long enough that no smallest size comes into play.
const char* const sample = "A sample of a caption";

// What is left of a widget's own size when its text is taken away; `before` of it, in pixels, at the left.
QMargins Around(const QWidget& widget, const QString& text, int before) {
    const QSize size = widget.sizeHint();
    const QFontMetrics metrics(widget.font());
    const int wide = std::max(0, size.width() - metrics.horizontalAdvance(text));
    const int high = std::max(0, size.height() - metrics.height());
    const int left = before < 0 ? wide / 2 : std::min(before, wide);
    return {left, high / 2, wide - left, high - high / 2};
}

QMargins AroundGroup() {
    QGroupBox box(sample);
    box.resize(400, 300);
    QStyleOptionGroupBox option;
    option.initFrom(&box);
    option.text = sample;
    option.lineWidth = 1;
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const QRect inner =
        box.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxContents, &box);
    return {inner.left(), inner.top(), box.width() - 1 - inner.right(), box.height() - 1 - inner.bottom()};
}

QMargins AroundMonth() {
    const QCalendarWidget month;
    const QFontMetrics metrics(month.font());
    // Beside the eight columns of four digits and eight lines of text, one and a third as high, that a month
    // has by itself.
    const QSize size = month.sizeHint() - QSize(8 * 4 * metrics.horizontalAdvance(QLatin1Char('0')),
                                                8 * (metrics.height() + metrics.height() / 3));
    const int wide = std::max(0, size.width());
    const int high = std::max(0, size.height());
    return {wide / 2, high / 2, wide - wide / 2, high - high / 2};
}

QMargins MeasureChrome(ControlKind kind) {
    QStyle& style = *QApplication::style();
    const int frame = style.pixelMetric(QStyle::PM_DefaultFrameWidth);
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Slider:
    case ControlKind::ProgressBar:
    case ControlKind::ScrollBar:
        return {};
    case ControlKind::TextBox: {
        const QLineEdit line;
        const int high = std::max(0, line.sizeHint().height() - QFontMetrics(line.font()).height());
        return {frame + 4, high / 2, frame + 4, high - high / 2};
    }
    case ControlKind::RichTextBox:
        return {frame + 6, frame + 4, frame + 6 + style.pixelMetric(QStyle::PM_ScrollBarExtent), frame + 4};
    case ControlKind::Button:
        return Around(QPushButton(sample), sample, -1);
    case ControlKind::CheckBox:
        return Around(QCheckBox(sample), sample,
                      style.pixelMetric(QStyle::PM_IndicatorWidth) +
                          style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    case ControlKind::OptionButton:
        return Around(QRadioButton(sample), sample,
                      style.pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                          style.pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
    case ControlKind::ComboBox: {
        QComboBox box;
        box.addItem(sample);
        return Around(box, sample, frame + 4);
    }
    case ControlKind::DatePicker: {
        QDateTimeEdit edit;
        edit.setDisplayFormat("dd.MM.yyyy HH:mm:ss");
        edit.setCalendarPopup(true);
        const QString text = "00.00.0000 00:00:00";
        return Around(edit, text, frame + 4);
    }
    case ControlKind::ListView:
        return {frame, frame, frame + style.pixelMetric(QStyle::PM_ScrollBarExtent), frame + 4};
    case ControlKind::TabStrip: {
        QTabBar bar;
        bar.addTab(sample);
        return {frame, bar.sizeHint().height() + frame, frame, frame};
    }
    case ControlKind::Frame:
        return AroundGroup();
    case ControlKind::MonthView:
        return AroundMonth();
    case ControlKind::PictureBox:
        return {frame, frame, frame, frame};
    }
    return {};
}

} // namespace

QtFormHost::QtFormHost() {
    QApplication::setQuitOnLastWindowClosed(false);
}

std::unique_ptr<FormView> QtFormHost::Create(Form& form) {
    return std::make_unique<QtFormView>(form);
}

FontSpec QtFormHost::DefaultFont() {
    return SpecOf(QApplication::font());
}

TwipSize QtFormHost::TextSize(const FontSpec& font, std::string_view text, int wrapWidth) {
    const TwipScale scale = Scale();
    const QFontMetrics metrics(FontOf(font));
    const QString shown = ToWidgetText(text);
    QSize size;
    if (wrapWidth > 0) {
        const QRect room(0, 0, scale.PixelsX(wrapWidth), 1 << 20);
        size = metrics.boundingRect(room, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, shown).size();
    } else {
        const QStringList lines = shown.split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            // Slanted letters lean over the end of their advance.
            const int width =
                std::max(metrics.horizontalAdvance(line), metrics.boundingRect(line).right() + 1);
            size.setWidth(std::max(size.width(), width));
        }
        size.setHeight(metrics.height() + static_cast<int>(lines.size() - 1) * metrics.lineSpacing());
    }
    return {scale.TwipsX(size.width() + 1), scale.TwipsY(size.height())};
}

Insets QtFormHost::Chrome(ControlKind kind) {
    const auto known = chromes_.find(kind);
    if (known != chromes_.end()) return known->second;
    const TwipScale scale = Scale();
    const QMargins pixels = MeasureChrome(kind);
    const Insets around{scale.TwipsX(pixels.left()), scale.TwipsY(pixels.top()), scale.TwipsX(pixels.right()),
                        scale.TwipsY(pixels.bottom())};
    chromes_[kind] = around;
    return around;
}

TwipScale QtFormHost::Scale() {
    constexpr double TwipsPerInch = 1440;
    const QScreen* screen = QGuiApplication::primaryScreen();
    return {TwipsPerInch / screen->logicalDotsPerInchX(), TwipsPerInch / screen->logicalDotsPerInchY()};
}

double QtFormHost::PixelRatio() {
    return QGuiApplication::primaryScreen()->devicePixelRatio();
}

TwipRect QtFormHost::WorkArea() {
    const TwipScale scale = Scale();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    return {scale.TwipsX(area.x()), scale.TwipsY(area.y()), scale.TwipsX(area.width()),
            scale.TwipsY(area.height())};
}

} // namespace quorvane
