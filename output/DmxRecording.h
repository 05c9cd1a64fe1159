#pragma once

#include <QDateTime>
#include <QFile>
#include <QString>
#include <QVector>
#include <QtGlobal>

#include <memory>
#include <vector>

/// The file that a controller's part of a show is recorded to: a text header, then a binary body
/// (little-endian) of light numbers and frames. Frames are held in memory until the end.
class DmxRecording
{
public:
    struct Header
    {
        QDateTime created;
        int framesPerSecond = 40;
        int channels = 512;
        quint32 totalMs = 0;
    };

    /// `chosen` without what stands from its last ".dmx" on, if it ends so (case-sensitive).
    static QString basePath(const QString& chosen);
    /// Base path, "_", the controller's name as it is, ".dmx".
    static QString fileName(const QString& basePath, const QString& controllerName);
    /// Makes the file anew with its text header. False, with a line in the debug log, where it
    /// can't be written.
    static bool writeHeader(const QString& path, const Header& header);

    explicit DmxRecording(const QString& path);

    /// Opens the file for appending the body.
    [[nodiscard]] bool open();
    bool isOpen() const { return m_file.isOpen(); }
    /// Light after light, frame after frame.
    void appendLight(quint8 red, quint8 green, quint8 blue)
    {
        if (m_room < kLightBytes) {
            addPiece();
        }
        m_next[0] = static_cast<char>(red);
        m_next[1] = static_cast<char>(green);
        m_next[2] = static_cast<char>(blue);
        m_next += kLightBytes;
        m_room -= kLightBytes;
    }
    void endFrame() { ++m_frameCount; }
    quint32 frameCount() const { return m_frameCount; }
    /// Writes the body and closes the file. `lightCount` goes into its head; `lightNumbers` may be
    /// fewer. False, with a line in the debug log, where not all of it could be written.
    bool finish(quint32 lightCount, const QVector<quint32>& lightNumbers);

private:
    static constexpr int kLightBytes = 3;

    void addPiece();

    QFile m_file;
    // In pieces, all full but the last: one array would end at two gigabytes, and would be moved
    // as it grows.
    std::vector<std::unique_ptr<char[]>> m_pieces;
    char* m_next = nullptr; // in the last piece
    int m_room = 0;         // bytes left in it
    quint32 m_frameCount = 0;
};
