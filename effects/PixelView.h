#pragma once

#include <QImage>
#include <QRgb>
#include <QtGlobal>

/// The pixels of a picture, which must outlive the view, as QImage::valid() and QImage::pixel()
/// give them, without asking the format for each.
class PixelView
{
public:
    explicit PixelView(const QImage& image)
        : m_image(image)
        , m_bits(isDirect(image) ? image.constBits() : nullptr)
        , m_bytesPerLine(image.bytesPerLine())
        , m_width(image.width())
        , m_height(image.height())
    {}
    /// Whether the pixels lie in memory as QImage::pixel() gives them, but for the alpha.
    static bool isDirect(const QImage& image)
    {
        return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32;
    }
    int width() const { return m_width; }
    int height() const { return m_height; }
    bool contains(int x, int y) const { return x >= 0 && x < m_width && y >= 0 && y < m_height; }
    /// The pixel of a contained place; its alpha says nothing.
    QRgb at(int x, int y) const
    {
        if (m_bits == nullptr) {
            return m_image.pixel(x, y);
        }
        return reinterpret_cast<const QRgb*>(m_bits + m_bytesPerLine * y)[x];
    }

private:
    const QImage& m_image;
    const uchar* m_bits;
    qint64 m_bytesPerLine;
    int m_width;
    int m_height;
};
