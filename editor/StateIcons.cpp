#include "editor/StateIcons.h"

#include <QColor>
#include <QImage>
#include <QPixmap>

#include <array>
#include <cstddef>

namespace {

// A slate that reads on light and dark rows alike; '+' is a half tone that rounds a corner.
const QRgb kInk = qRgba(0x5b, 0x70, 0x8a, 0xff);
const QRgb kHalf = qRgba(0x5b, 0x70, 0x8a, 0x70);
const QRgb kAccent = qRgba(0xd2, 0x74, 0x1a, 0xff);
const QRgb kWhite = qRgba(0xff, 0xff, 0xff, 0xff);
const QRgb kWhiteHalf = qRgba(0xff, 0xff, 0xff, 0x70);
const QRgb kAccentHalf = qRgba(0xd2, 0x74, 0x1a, 0x70);

template <std::size_t Side>
QPixmap drawPixmap(const std::array<const char*, Side>& rows, QRgb ink, QRgb half)
{
    const int side = static_cast<int>(Side);
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int y = 0; y < side; ++y) {
        const char* const row = rows[static_cast<std::size_t>(y)];
        for (int x = 0; x < side; ++x) {
            if (row[x] == '#') {
                image.setPixel(x, y, ink);
            } else if (row[x] == '+') {
                image.setPixel(x, y, half);
            }
        }
    }
    return QPixmap::fromImage(image);
}

/// Plain white on a selected row, where the style's own tint would all but vanish.
template <std::size_t Side>
QIcon draw(const std::array<const char*, Side>& rows, QRgb ink, QRgb half)
{
    QIcon icon(drawPixmap(rows, ink, half));
    icon.addPixmap(drawPixmap(rows, kWhite, kWhiteHalf), QIcon::Selected);
    return icon;
}

} // namespace

const QIcon& StateIcons::ICON_NONE()
{
    static const QIcon kIcon;
    return kIcon;
}

const QIcon& StateIcons::ICON_LINK()
{
    // Two chain links on the diagonal.
    static const QIcon kIcon = draw<7>({"...+##+", //
                                        "...#..#", //
                                        "+###..#", //
                                        "#..####", //
                                        "#..###+", //
                                        "#..#...", //
                                        "+##+..."},
                                       kInk, kHalf);
    return kIcon;
}

const QIcon& StateIcons::ICON_CYCLE()
{
    // A turn of three quarters with its arrow head.
    static const QIcon kIcon = draw<10>({"..+####+..", //
                                         ".+#++++#+.", //
                                         "+#+....+#.", //
                                         "#+......+.", //
                                         "#.........", //
                                         "#....#####", //
                                         "#+....+###", //
                                         "+#+...+##+", //
                                         ".+#++##+#.", //
                                         "..+####+.."},
                                        kInk, kHalf);
    return kIcon;
}

const QIcon& StateIcons::ICON_OPEN()
{
    static const QIcon kIcon = draw<8>({".+####+.", //
                                        "+#+..+#+", //
                                        "#+....+#", //
                                        "#......#", //
                                        "#......#", //
                                        "#+....+#", //
                                        "+#+..+#+", //
                                        ".+####+."},
                                       kInk, kHalf);
    return kIcon;
}

const QIcon& StateIcons::ICON_CLOSE()
{
    static const QIcon kIcon = draw<8>({".+####+.", //
                                        "+######+", //
                                        "########", //
                                        "########", //
                                        "########", //
                                        "########", //
                                        "+######+", //
                                        ".+####+."},
                                       kAccent, kAccentHalf);
    return kIcon;
}
