#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QList>
#include <QString>
#include <QVector>
#include <QtEndian>

/// A recording taken apart byte for byte, as a player would: six lines of text, a head of 16 bytes,
/// the light numbers, the frames. `problem` is empty where all of the file was accounted for.
struct RecordingReader
{
    QString problem;
    QByteArrayList header; ///< without the line ends
    quint32 frameCount = 0;
    quint32 lightCount = 0; ///< as the head has it
    QVector<quint32> numbers;
    QList<QByteArray> frames; ///< 3 bytes a light

    /// A whole file. `numberCount` is how many light numbers it holds, -1 for as many as it says.
    static RecordingReader ofFile(const QString& path, int numberCount = -1)
    {
        constexpr int kHeaderLines = 6;
        RecordingReader result;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            result.problem = QStringLiteral("no file %1").arg(path);
            return result;
        }
        QByteArray bytes = file.readAll();
        for (int i = 0; i < kHeaderLines; ++i) {
            const int end = bytes.indexOf('\n');
            if (end < 1 || bytes.at(end - 1) != '\r') {
                result.problem = QStringLiteral("line %1 has no end").arg(i + 1);
                return result;
            }
            result.header.append(bytes.left(end - 1));
            bytes.remove(0, end + 1);
        }
        result.readBody(bytes, numberCount);
        return result;
    }
    /// What stands behind the text.
    static RecordingReader ofBody(const QByteArray& bytes, int numberCount = -1)
    {
        RecordingReader result;
        result.readBody(bytes, numberCount);
        return result;
    }

    /// The three bytes of the light at `index` in each frame.
    QByteArrayList colorsOf(int index) const
    {
        QByteArrayList list;
        for (const QByteArray& frame : frames) {
            list.append(frame.mid(3 * index, 3));
        }
        return list;
    }

private:
    static quint32 u32(const QByteArray& bytes, int offset)
    {
        return qFromLittleEndian<quint32>(bytes.constData() + offset);
    }
    void readBody(const QByteArray& bytes, int numberCount)
    {
        constexpr int kHeadBytes = 16;
        if (bytes.size() < kHeadBytes || bytes.left(4) != QByteArray::fromHex("edfeebbe") ||
            bytes.mid(12, 4) != QByteArray::fromHex("efbeadde")) {
            problem = QStringLiteral("no head");
            return;
        }
        frameCount = u32(bytes, 4);
        lightCount = u32(bytes, 8);
        const int held = numberCount < 0 ? static_cast<int>(lightCount) : numberCount;
        const int frameBytes = bytes.size() - kHeadBytes - 4 * held;
        const int count = static_cast<int>(frameCount);
        if (frameBytes < 0 || (count == 0 && frameBytes != 0) ||
            (count != 0 && frameBytes % (3 * count) != 0)) {
            problem = QStringLiteral("%1 bytes for %2 frames").arg(frameBytes).arg(count);
            return;
        }
        for (int i = 0; i < held; ++i) {
            numbers.append(u32(bytes, kHeadBytes + 4 * i));
        }
        for (int i = 0; i < count; ++i) {
            const int size = frameBytes / count;
            frames.append(bytes.mid(kHeadBytes + 4 * held + i * size, size));
        }
    }
};
