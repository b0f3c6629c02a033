#pragma once

#include <QQuickImageProvider>

namespace stintbook {

/// Our icons, drawn in the ink that is asked for: "image://glyphs/review/#2f5fd3".
class GlyphProvider final : public QQuickImageProvider {
public:
    GlyphProvider()
        : QQuickImageProvider(QQuickImageProvider::Image)
    {
    }

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace stintbook
