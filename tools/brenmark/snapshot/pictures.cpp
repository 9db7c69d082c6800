#include "brenmark/snapshot/pictures.h"

#include "brenmark/failure.h"
#include "brenmark/plot_axis.h"
#include "brenmark/terminal.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>

#include <cmath>

namespace NBrenmark {

/// Where the legend's bar is, pixels.
static constexpr int barLeft = 830, barTop = 140, barWidth = 22, barHeight = 440, barSteps = 64;

static bool hasLegend(const SScene& scene) { return !scene.legend.empty() && scene.least <= scene.greatest; }

static SAxis legendAxis(const SScene& scene) { return SAxis(scene.least, scene.greatest, 6); }

/// Calls body with each tick within the colours: its place on the page and its text.
template <class TBody>
static void forEachTick(const SScene& scene, TBody&& body)
{
    const SAxis axis = legendAxis(scene);
    const double range = scene.greatest - scene.least;
    for (int tick = 0; tick < axis.tickCount(); ++tick) {
        const double share = range > 0.0 ? (axis.tick(tick) - scene.least) / range : 0.5;
        if (share >= -1e-9 && share <= 1.0 + 1e-9 && (range > 0.0 || tick == 0))
            body(barTop + (1 - share) * barHeight,
                 range > 0.0 ? significant(std::abs(axis.tick(tick)) < 1e-9 * axis.step ? 0.0 : axis.tick(tick), 5)
                             : significant(scene.least, 5));
    }
}

static std::string svgColour(const SColour& colour)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(colour.red) & 255u,
                  static_cast<unsigned>(colour.green) & 255u, static_cast<unsigned>(colour.blue) & 255u);
    return text;
}

std::string sceneSvg(const SScene& scene)
{
    const auto number = [](double value) { return significant(value, 5); };
    const std::string width = std::to_string(scene.width), height = std::to_string(scene.height);
    std::string svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + width + ' ' + height +
        "\" font-family=\"Helvetica, Arial, sans-serif\" font-size=\"14\" fill=\"#333\">\n<rect width=\"" + width +
        "\" height=\"" + height + "\" fill=\"#fff\"/>\n<text x=\"40\" y=\"40\" font-size=\"17\">" +
        svgText(scene.title) + "</text>\n<g stroke=\"#fff\" stroke-width=\"0.4\">\n";
    for (const SMark& mark : scene.marks)
        svg += mark.isDisc
                   ? "<circle cx=\"" + number(mark.x) + "\" cy=\"" + number(mark.y) + "\" r=\"" + number(mark.radius) +
                         "\" fill=\"" + svgColour(mark.colour) + "\"/>\n"
                   : "<path d=\"M" + number(mark.x) + ' ' + number(mark.y) + " L" + number(mark.toX) + ' ' +
                         number(mark.toY) + "\" stroke=\"" + svgColour(mark.colour) + "\" stroke-width=\"1.5\"/>\n";
    svg += "</g>\n";
    if (!hasLegend(scene))
        return svg + "</svg>\n";
    for (int i = 0; i < barSteps; ++i)
        svg += "<rect x=\"" + std::to_string(barLeft) + "\" y=\"" +
               number(barTop + barHeight - barHeight * (i + 1.0) / barSteps) + "\" width=\"" +
               std::to_string(barWidth) + "\" height=\"" + number(barHeight / double(barSteps) + 0.5) + "\" fill=\"" +
               svgColour(colourOf((i + 0.5) / barSteps)) + "\"/>\n";
    forEachTick(scene, [&](double y, const std::string& text) {
        svg += "<text x=\"" + std::to_string(barLeft + barWidth + 8) + "\" y=\"" + number(y + 5) + "\">" + text +
               "</text>\n";
    });
    return svg + "<text x=\"" + std::to_string(scene.width - 20) + "\" y=\"" + std::to_string(barTop - 20) +
           "\" text-anchor=\"end\">" + svgText(scene.legend) + "</text>\n</svg>\n";
}

// ---------------------------------------------------------------- image

static QColor qtColour(const SColour& colour) { return QColor(colour.red, colour.green, colour.blue); }

static void paint(QPainter& painter, const SScene& scene)
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SMark& mark : scene.marks) {
        const QColor colour = qtColour(mark.colour);
        if (!mark.isDisc) {
            painter.setPen(QPen(colour, 1.5));
            painter.drawLine(QPointF(mark.x, mark.y), QPointF(mark.toX, mark.toY));
            continue;
        }
        painter.setPen(QPen(QColor(255, 255, 255), 0.4));
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(mark.x, mark.y), mark.radius, mark.radius);
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(17);
    painter.setFont(font);
    painter.setPen(QColor(51, 51, 51));
    painter.drawText(QPointF(40, 40), QString::fromStdString(oneLine(scene.title)));
    if (!hasLegend(scene))
        return;
    font.setPixelSize(14);
    painter.setFont(font);
    for (int i = 0; i < barSteps; ++i)
        painter.fillRect(QRectF(barLeft, barTop + barHeight - barHeight * (i + 1.0) / barSteps, barWidth,
                                barHeight / double(barSteps) + 0.5),
                         qtColour(colourOf((i + 0.5) / barSteps)));
    forEachTick(scene, [&](double y, const std::string& text) {
        painter.drawText(QPointF(barLeft + barWidth + 8, y + 5), QString::fromStdString(text));
    });
    painter.drawText(QRectF(0, barTop - 40, scene.width - 20, 24), Qt::AlignRight | Qt::AlignVCenter,
                     QString::fromStdString(oneLine(scene.legend)));
}

void writePng(const SScene& scene, const QString& path)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // Qt misses a desktop
    int argumentCount = 1;
    char name[] = "brenmark";
    char* arguments[] = {name, nullptr};
    const QGuiApplication application(argumentCount, arguments); // texts need its fonts
    QImage image(scene.width, scene.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, scene);
    painter.end();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG") || !file.commit()) {
        const std::string cause = utf8(file.errorString());
        throw CFailure(eExitTarget, utf8(path) + ": can't be written: " + cause, adviceForWriting(cause));
    }
}

} // namespace NBrenmark
