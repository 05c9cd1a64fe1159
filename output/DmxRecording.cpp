#include "output/DmxRecording.h"

#include <QDataStream>
#include <QDebug>
#include <QTextStream>

namespace {

constexpr quint32 kStartMark = 0xBEEBFEEDU;
constexpr quint32 kEndMark = 0xDEADBEEFU;
constexpr int kPieceBytes = 3 * 1024 * 1024; // whole lights

QString suffix()
{
    return QStringLiteral(".dmx");
}

} // namespace

QString DmxRecording::basePath(const QString& chosen)
{
    return chosen.endsWith(suffix()) ? chosen.left(chosen.lastIndexOf(suffix())) : chosen;
}

QString DmxRecording::fileName(const QString& basePath, const QString& controllerName)
{
    return basePath + QLatin1Char('_') + controllerName + suffix();
}

bool DmxRecording::writeHeader(const QString& path, const Header& header)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qDebug() << "Could not open recording for its header:" << path << file.errorString();
        return false;
    }
    QTextStream text(&file);
    text << "dmx_file_version = 1 \r\n";
    text << "file_creation = " << header.created.date().toString(QStringLiteral("MMMM d, yyyy "))
         << header.created.time().toString(QStringLiteral("h:mm:ss AP\r\n"));
    text << "show_file_name = " << path << "\r\n";
    text << "rate = " << header.framesPerSecond << ".000000\r\n";
    text << "num_dmx_channels = " << header.channels << "\r\n";
    text << "total_time = " << header.totalMs << "\r\n";
    text.flush();
    file.close();
    if (text.status() != QTextStream::Ok || file.error() != QFileDevice::NoError) {
        qDebug() << "Could not write the header of recording:" << path << file.errorString();
        return false;
    }
    return true;
}

DmxRecording::DmxRecording(const QString& path)
    : m_file(path)
{}

bool DmxRecording::open()
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        qDebug() << "Could not open recording:" << m_file.fileName() << m_file.errorString();
        return false;
    }
    return true;
}

void DmxRecording::addPiece()
{
    static_assert(kPieceBytes % kLightBytes == 0, "only the last piece may be short");
    m_pieces.emplace_back(new char[kPieceBytes]); // its pages cost nothing until they are used
    m_next = m_pieces.back().get();
    m_room = kPieceBytes;
}

bool DmxRecording::finish(quint32 lightCount, const QVector<quint32>& lightNumbers)
{
    QDataStream stream(&m_file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << kStartMark << m_frameCount << lightCount << kEndMark;
    for (const quint32 number : lightNumbers) {
        stream << number;
    }
    for (const std::unique_ptr<char[]>& piece : m_pieces) {
        stream.writeRawData(piece.get(),
                            piece == m_pieces.back() ? kPieceBytes - m_room : kPieceBytes);
    }
    m_pieces.clear();
    m_room = 0;
    const bool isFlushed = m_file.flush();
    const bool isWritten = isFlushed && stream.status() == QDataStream::Ok;
    if (!isWritten) {
        qDebug() << "Could not write recording:" << m_file.fileName() << m_file.errorString();
    }
    m_file.close();
    return isWritten;
}
