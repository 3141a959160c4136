#include "platform/linux/forms/prompts.h"

#include "core/text.h"
#include "platform/linux/desktop/icon.h"
#include "platform/linux/drawing/font.h"
#include "platform/linux/forms/qt_text.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QMessageBox>

namespace quorvane {

namespace {

QMessageBox::Icon IconOf(int style) {
    switch (style & 0x70) {
    case 16:
        return QMessageBox::Critical;
    case 32:
        return QMessageBox::Question;
    case 48:
        return QMessageBox::Warning;
    case 64:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// "Bitmap files (*.bmp)|*.bmp|All files (*.*)|*.*" as the dialogue's own filters. The description's part in
// parentheses gives way to the patterns that really hold.
QStringList FiltersOf(const std::string& filter) {
    QStringList filters;
    const std::vector<std::string> parts = Split(filter, '|');
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        QString description = ToWidgetText(parts[i]);
        const qsizetype parenthesis = description.indexOf(QLatin1Char('('));
        if (parenthesis >= 0) description.truncate(parenthesis);
        QStringList patterns;
        for (const std::string& pattern : Split(parts[i + 1], ';')) {
            patterns.append(pattern == "*.*" ? QStringLiteral("*") : ToWidgetText(Trim(pattern)));
        }
        filters.append(description.trimmed() + " (" + patterns.join(QLatin1Char(' ')) + ')');
    }
    return filters;
}

} // namespace

QtPrompts::QtPrompts(FormHost& host)
    : host_(host) {
    QCoreApplication::installTranslator(&words_);
}

QtPrompts::~QtPrompts() {
    QCoreApplication::removeTranslator(&words_);
}

QString QtPrompts::ButtonWords::translate(const char*, const char* source, const char*, int) const {
    const std::string_view word = source;
    return word == "OK" ? QStringLiteral("Ok") : word == "&OK" ? QStringLiteral("&Ok") : QString();
}

Answer QtPrompts::Message(const std::string& text, const std::string& title, int style) {
    const QuestionStands stands(host_.Order());
    QMessageBox box(QApplication::activeWindow());
    box.setWindowIcon(ProgramIcon());
    box.setIcon(IconOf(style));
    box.setWindowTitle(ToWidgetText(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToWidgetText(text));
    const bool asks = (style & 7) == 4;
    box.setStandardButtons(asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    box.setDefaultButton(asks ? QMessageBox::Yes : QMessageBox::Ok);
    if (asks) box.setEscapeButton(QMessageBox::No);
    const int pressed = box.exec();
    if (!asks) return Answer::Ok;
    return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<std::string> QtPrompts::File(FileQuestion& question) {
    const QuestionStands stands(host_.Order());
    QFileDialog dialogue(QApplication::activeWindow(), ToWidgetText(question.title),
                         QString::fromStdString(question.directory));
    dialogue.setAcceptMode(question.forSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool anyName = question.forSave || !question.mustExist;
    dialogue.setFileMode(anyName ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // A desktop's own chooser opens nothing but what is there.
    if (!question.forSave && !question.mustExist) dialogue.setOption(QFileDialog::DontUseNativeDialog);
    const QStringList filters = FiltersOf(question.filter);
    if (!filters.isEmpty()) {
        dialogue.setNameFilters(filters);
        const int chosen = question.filterIndex - 1;
        if (chosen >= 0 && chosen < filters.size()) dialogue.selectNameFilter(filters[chosen]);
    }
    if (!question.name.empty()) dialogue.selectFile(QString::fromStdString(question.name));
    if (dialogue.exec() != QDialog::Accepted || dialogue.selectedFiles().isEmpty()) return std::nullopt;
    question.filterIndex = std::max(1, static_cast<int>(filters.indexOf(dialogue.selectedNameFilter())) + 1);
    return dialogue.selectedFiles().constFirst().toStdString();
}

std::optional<FontSpec> QtPrompts::Font(const FontSpec& preset) {
    const QuestionStands stands(host_.Order());
    bool accepted = false;
    const QFont font = QFontDialog::getFont(&accepted, FontOf(preset), QApplication::activeWindow());
    if (!accepted) return std::nullopt;
    return SpecOf(font);
}

std::optional<Color> QtPrompts::PickColor(Color preset) {
    const QuestionStands stands(host_.Order());
    const QColor color = QColorDialog::getColor(ToQColor(preset), QApplication::activeWindow());
    if (!color.isValid()) return std::nullopt;
    return Rgb(color.red(), color.green(), color.blue());
}

} // namespace quorvane
