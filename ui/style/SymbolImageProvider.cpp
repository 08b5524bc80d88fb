#include "ui/style/SymbolImageProvider.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

// Outside of the namespace, as the macro asks.
static void loadStyleResources()
{
    Q_INIT_RESOURCE(symbols);
}

namespace fadewell {
namespace {

constexpr int ordinarySize = 24;

QByteArray source(const QString& name, int waves)
{
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    auto text = file.readAll();
    for (int wave = waves + 1; wave <= 3; ++wave) {
        const auto id = "id=\"wave-" + QByteArray::number(wave) + "\" opacity=";
        text.replace(id + "\"1\"", id + "\"0.28\"");
    }
    return text;
}

} // namespace

SymbolImageProvider::SymbolImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const auto parts = id.split('/');
    QImage image;
    if (parts.size() == 3) {
        const auto rgba = parts[2].toUInt(nullptr, 16);
        const QColor color(static_cast<int>(rgba >> 24U & 0xFFU),
                           static_cast<int>(rgba >> 16U & 0xFFU),
                           static_cast<int>(rgba >> 8U & 0xFFU),
                           static_cast<int>(rgba & 0xFFU));
        image = draw(parts[0],
                     parts[1].toInt(),
                     color,
                     requestedSize.isEmpty() ? QSize(ordinarySize, ordinarySize) : requestedSize);
    }
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

QImage
SymbolImageProvider::draw(const QString& name, int waves, const QColor& color, const QSize& size)
{
    loadStyleResources();
    QSvgRenderer renderer(source(name, waves));
    if (!renderer.isValid()) {
        return {};
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    // Every part has the same colour, so that only where there is one counts.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace fadewell
