#include "platform/linux/drawing/gui_session.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_kind.h"
#include "platform/linux/drawing/svg.h"

#include <QBuffer>
#include <QImageReader>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace quorvane {
namespace {

std::string Damaged(const QString& reason) {
    return "the picture is damaged: " + reason.toStdString();
}

// A part of the same drawing, or a picture that stands in the text itself; a drawing in it could name others.
bool StandsInside(QStringView reference) {
    const QString text = reference.trimmed().toString();
    if (text.isEmpty() || text.startsWith(u'#')) return true;
    const QLatin1String start("base64,");
    const qsizetype data = text.lastIndexOf(start);
    if (!text.startsWith(QLatin1String("data:")) || data < 0) return false;
    const QByteArray head = QByteArray::fromBase64(text.mid(data + start.size(), 64).toLatin1());
    switch (KindOf({head.constData(), static_cast<std::size_t>(head.size())})) {
    case PictureKind::Bitmap:
    case PictureKind::Gif:
    case PictureKind::Jpeg:
    case PictureKind::Png:
    case PictureKind::Webp:
        return true;
    default:
        return false;
    }
}

bool IsReference(QStringView attribute) {
    return attribute.compare(QLatin1String("href"), Qt::CaseInsensitive) == 0 ||
           attribute.endsWith(QLatin1String(":href"), Qt::CaseInsensitive);
}

bool LeadsOutside(const QXmlStreamAttribute& attribute) {
    return IsReference(attribute.qualifiedName()) && !StandsInside(attribute.value());
}

// A style sheet of another file.
bool LeadsOutside(const QXmlStreamReader& reader) {
    if (reader.tokenType() == QXmlStreamReader::ProcessingInstruction) return true;
    if (reader.tokenType() != QXmlStreamReader::StartElement) return false;
    const QXmlStreamAttributes attributes = reader.attributes();
    return std::any_of(attributes.begin(), attributes.end(),
                       [](const QXmlStreamAttribute& attribute) { return LeadsOutside(attribute); });
}

bool NamesOutside(const QByteArray& svg) {
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        reader.readNext();
        if (LeadsOutside(reader)) return true;
    }
    return false;
}

class SvgPicture final : public LinuxPicture {
  public:
    SvgPicture(QByteArray svg, PixelSize size)
        : LinuxPicture(size, {}, RowPainter::Mode::Blend)
        , svg_(std::move(svg)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override { return PaintSvg(svg_, painter, why); }

  private:
    QByteArray svg_;
};

} // namespace

QByteArray WithoutOutside(const QByteArray& svg) {
    if (!NamesOutside(svg)) return svg;
    QByteArray inside;
    QXmlStreamWriter writer(&inside);
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            writer.writeStartElement(reader.qualifiedName().toString());
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                if (!LeadsOutside(attribute))
                    writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
            break;
        case QXmlStreamReader::EndElement:
            writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        default:
            break;
        }
    }
    return inside;
}

bool PaintSvg(const QByteArray& svg, RowPainter& painter, std::string& why) {
    const PixelSize whole = painter.StoredSize();
    const PixelRect part = painter.StoredPart();
    QBuffer buffer;
    buffer.setData(svg);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(QSize(whole.width, whole.height));
    reader.setScaledClipRect(QRect(part.x, part.y, part.width, part.height));
    QImage image;
    if (!reader.read(&image)) {
        why = Damaged(reader.errorString());
        return false;
    }
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < std::min(part.height, image.height()) && image.width() >= part.width; ++y)
        painter.Put(y, image.constScanLine(y));
    return true;
}

std::unique_ptr<LinuxPicture> OpenSvg(const std::string& path, GuiSession& gui, std::string& why) {
    if (!gui.Ready()) {
        why = "no fonts are available";
        return nullptr;
    }
    QByteArray content;
    if (!ReadWhole(path, content, why)) return nullptr;
    QByteArray svg = WithoutOutside(content);
    QBuffer buffer(&svg);
    QImageReader reader(&buffer, "svg");
    const QSize size = reader.size();
    if (!size.isValid()) {
        why = Damaged(reader.errorString());
        return nullptr;
    }
    const PixelSize pixels{size.width(), size.height()};
    if (!SensibleSize(pixels, why)) return nullptr;
    return std::make_unique<SvgPicture>(std::move(svg), pixels);
}

} // namespace quorvane
