#pragma once

#include "engine/Effect.h"
#include "map/Group.h"
#include "tests/devices/FileSupport.h"
#include "tests/engine/TestShow.h"

#include <QDir>
#include <QImage>
#include <QPointF>
#include <QSize>
#include <QTemporaryDir>
#include <QVector>

/// A map of lights at given places, and a directory for pictures. Lights are numbered from 1 on.
/// All lights are in each of: the chase 0x1000, the nested chase 0x1001, the synchronized group
/// 0x1002; 0x1003 has none, 0x1004 is a leaf of no light, 0x1005 the first light and that leaf.
class PictureStage
{
public:
    explicit PictureStage(const QVector<QPointF>& places)
        : m_count(places.size())
        , m_model(std::make_unique<MapModel>(std::make_unique<SilentSocket>()))
    {
        using TestShow::group;
        QString text = QStringLiteral("<map>");
        QVector<quint64> all;
        QVector<quint64> tail;
        for (int i = 0; i < places.size(); ++i) {
            const quint64 uid = static_cast<quint64>(i) + 1;
            text += QStringLiteral("<light><self>%1</self><x>%2</x><y>%3</y></light>")
                        .arg(QString::number(uid, 16))
                        .arg(places.at(i).x(), 0, 'g', 17)
                        .arg(places.at(i).y(), 0, 'g', 17);
            text += group(uid, 3, {uid});
            all.append(uid);
            if (i > 0) {
                tail.append(uid);
            }
        }
        text += group(0x1000, 1, all) + group(0x1001, 1, {1, 0x1010}) + group(0x1010, 1, tail) +
                group(0x1002, 2, all) + group(0x1003, 1, {}) + group(0x1004, 3, {0x1004}) +
                group(0x1005, 1, {1, 0x1004}) + QStringLiteral("</map>");
        const QString file = path("stage.map");
        m_loaded = writeFile(file, text.toUtf8()) && m_model->load(file);
        m_model->setSimulateOnly(true);
        endFrame();
    }
    /// `columns` by `rows` lights, `pitch` map units apart, row by row from 0, 0 on.
    PictureStage(int columns, int rows, double pitch)
        : PictureStage(grid(columns, rows, pitch))
    {}
    static QVector<QPointF> grid(int columns, int rows, double pitch)
    {
        QVector<QPointF> places;
        for (int i = 0; i < columns * rows; ++i) {
            places.append({i % columns * pitch, i / columns * pitch});
        }
        return places;
    }

    bool isLoaded() const { return m_loaded && m_dir.isValid(); }
    int lightCount() const { return m_count; }
    MapModel* model() { return m_model.get(); }
    Light* light(int uid) { return m_model->light(static_cast<quint64>(uid)); }
    VelaColor mix(int uid) { return light(uid)->mixColorRef(); }
    QColor sim(int uid) { return light(uid)->simColor(); }
    void endFrame() { m_model->updateLights(); }
    /// One frame of `effect`, `ms` after its start, on untouched lights.
    void run(Effect& effect, qint64 ms)
    {
        endFrame();
        effect.setActive(true);
        effect.setStartMs(TestShow::kStartMs);
        effect.tick(TestShow::kStartMs + ms, 0);
    }

    /// A file of the stage's own directory.
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    /// Saves a picture there; its path.
    QString save(const char* name, const QImage& image) const
    {
        const QString file = path(name);
        QDir().mkpath(QFileInfo(file).path());
        return image.save(file) ? file : QString();
    }

private:
    int m_count;
    QTemporaryDir m_dir;
    std::unique_ptr<MapModel> m_model;
    bool m_loaded = false;
};

/// One colour.
inline QImage plainPicture(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Each pixel tells where it is: red is 10 x column, green 10 x row, blue 77.
inline QImage placePicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, qRgb(10 * x, 10 * y, 77));
        }
    }
    return image;
}

/// What a light that was black shows of one layer.
inline VelaColor overBlack(const VelaColor& color)
{
    return composite(color, VelaColor::fromRgb(0, 0, 0));
}

inline QColor screenOverBlack(const QColor& color)
{
    return color.alpha() == 255
               ? color
               : composite(VelaColor(color), VelaColor(QColor(Qt::black))).toQColor(true);
}
