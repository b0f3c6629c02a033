#include "Screens/Window/GlyphProvider.h"

#include <QPainter>
#include <QSvgRenderer>

namespace stintbook {

QImage GlyphProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const auto name = id.section(QLatin1Char('/'), 0, 0);
    const QColor ink(id.section(QLatin1Char('/'), 1, 1));
    const QSize wanted = requestedSize.isValid() ? requestedSize : QSize(16, 16);
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(QStringLiteral(":/qt/qml/Velloran/Icons/%1.svg").arg(name)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), ink);
    *size = wanted;
    return image;
}

} // namespace stintbook
