#include "workbench/window/FigurePainter.h"

#include "workbench/messages/Failure.h"
#include "workbench/window/PlotColours.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QImage>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSvgGenerator>

#include <utility>

constexpr int captionMargin = 12;
constexpr double dotsPerInch = 96.0;

static QFont pictureFont() {
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    return font;
}

static int heightOf(const QString& text, const QFont& font, int width) {
    return text.isEmpty() ? 0
                          : QFontMetrics(font)
                                .boundingRect(QRect(0, 0, width - 2 * captionMargin, 1 << 20),
                                              Qt::TextWordWrap | Qt::TextWrapAnywhere, text)
                                .height();
}

// Lines that leave most of the picture to the panes.
static QString fittingCaption(const Figure& figure, const PictureOrder& order, const QFont& font) {
    QString caption;
    for (const std::string& line : figure.caption) {
        const QString longer =
            caption + (caption.isEmpty() ? "" : "\n") + QString::fromStdString(line);
        if (heightOf(longer + "\n...", font, order.width) > order.height / 3) {
            return caption + (caption.isEmpty() ? "" : "\n...");
        }
        caption = longer;
    }
    return caption;
}

FigurePainter::FigurePainter(const Figure& figure, const PictureOrder& pictureOrder)
    : order(pictureOrder),
      font(pictureFont()),
      caption(fittingCaption(figure, order, font)),
      captionHeight(heightOf(caption, font, order.width) +
                    (caption.isEmpty() ? 0 : 2 * captionMargin)) {
    plot.setFont(font);
    plot.setFigure(std::shared_ptr<const Figure>(std::shared_ptr<const Figure>(), &figure));
    if (order.from || order.to) {
        requireStretch();
        plot.showStretch(order.from, order.to);
    }
}

void FigurePainter::requireStretch() const {
    for (std::size_t i = 0; i < plot.paneCount(); ++i) {
        const QCPRange all = plot.pane(i).axis(QCPAxis::atBottom)->range();
        if (plot.shown().panes[i].linked && (order.from.value_or(all.lower) >= all.upper ||
                                             order.to.value_or(all.upper) <= all.lower)) {
            throw Failure(QString("the picture would be empty: the axis goes from %1 to %2; give "
                                  "another --from or --to")
                              .arg(all.lower)
                              .arg(all.upper)
                              .toStdString());
        }
    }
}

// scale: units of the device in a pixel.
void FigurePainter::paintOn(QPaintDevice& device, double scale, QCPPainter::PainterModes modes) {
    const PlotColours colours = PlotColours::light();
    QCPPainter painter(&device);
    painter.scale(scale, scale);
    painter.setModes(modes | QCPPainter::pmNoCaching);
    painter.fillRect(QRect(0, 0, order.width, order.height), colours.background);
    plot.toPainter(&painter, order.width, order.height - captionHeight);
    painter.setPen(colours.text);
    painter.setFont(font);
    painter.drawText(QRect(captionMargin, order.height - captionHeight + captionMargin / 2,
                           order.width - 2 * captionMargin, captionHeight),
                     Qt::TextWordWrap | Qt::TextWrapAnywhere, caption);
}

QByteArray FigurePainter::png() {
    QImage image(order.width, order.height, QImage::Format_RGB32);
    if (image.isNull()) {
        throw Failure("memory does not suffice for the picture; make it smaller with --size");
    }
    constexpr double inchesPerMetre = 1.0 / 0.0254;
    image.setDotsPerMeterX(qRound(dotsPerInch * inchesPerMetre));
    image.setDotsPerMeterY(qRound(dotsPerInch * inchesPerMetre));
    paintOn(image, 1.0, QCPPainter::pmDefault);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray FigurePainter::svg() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(static_cast<int>(dotsPerInch));
    generator.setSize(QSize(order.width, order.height));
    generator.setViewBox(QRect(0, 0, order.width, order.height));
    generator.setTitle("Fendra");
    generator.setDescription({});
    paintOn(generator, 1.0, QCPPainter::pmVectorized);
    return bytes;
}

// The moment of writing, and what is made of it, stand in places of a fixed length.
static void removeMoment(QByteArray& bytes) {
    static const QRegularExpression moments(
        "CreationDate \\(D:\\d{14}|"
        "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d|"
        "uuid:[0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12}");
    const QString text = QString::fromLatin1(bytes);
    QRegularExpressionMatchIterator found = moments.globalMatch(text);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        for (qsizetype i = match.capturedStart(); i < match.capturedEnd(); ++i) {
            const bool digit = QChar::isDigit(static_cast<unsigned char>(bytes[i]));
            bytes[i] = digit ? '0' : bytes[i];
        }
    }
}

QByteArray FigurePainter::pdf() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    constexpr int resolution = 1200;
    writer.setResolution(resolution);
    writer.setTitle("Fendra");
    writer.setCreator("Fendra");
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setPageSize(QPageSize(QSizeF(order.width / dotsPerInch, order.height / dotsPerInch),
                                 QPageSize::Inch, {}, QPageSize::ExactMatch));
    paintOn(writer, resolution / dotsPerInch, QCPPainter::pmVectorized);
    removeMoment(bytes);
    return bytes;
}

std::vector<PaneFrame> FigurePainter::frames() const {
    std::vector<PaneFrame> all;
    for (std::size_t i = 0; i < plot.paneCount(); ++i) {
        const QCPAxisRect& pane = plot.pane(i);
        const QRectF rect = pane.rect();
        const QCPRange x = pane.axis(QCPAxis::atBottom)->range();
        const QCPRange y = pane.axis(QCPAxis::atLeft)->range();
        all.push_back({rect.left(), rect.top(), rect.width(), rect.height(), x.lower, x.upper,
                       y.lower, y.upper});
    }
    return all;
}

PaintedFigure FigurePainter::paint() {
    const QByteArray bytes = order.format == PictureFormat::png   ? png()
                             : order.format == PictureFormat::svg ? svg()
                                                                  : pdf();
    return {bytes.toStdString(), frames()};
}
