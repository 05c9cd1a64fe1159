#include "effects/FrameDirectory.h"

#include "effects/NaturalOrder.h"
#include "effects/PictureFile.h"

#include <QDir>

bool FrameDirectory::open(const QString& path)
{
    close();
    if (path.isEmpty()) {
        return false;
    }
    const QDir directory(path, QString(), QDir::Name, QDir::Files);
    m_names = directory.entryList();
    sortNaturally(&m_names);
    m_path = directory.path() + QLatin1Char('/');
    m_isReported.assign(static_cast<std::size_t>(m_names.size()), false);
    return !m_names.isEmpty();
}

void FrameDirectory::close()
{
    m_path.clear();
    m_names.clear();
    m_isReported.clear();
}

QImage FrameDirectory::read(int frame)
{
    QString reason;
    const QString file = m_path + m_names.at(frame);
    QImage image = PictureFile::read(file, &reason);
    const auto index = static_cast<std::size_t>(frame);
    if (image.isNull() && !m_isReported[index]) {
        m_isReported[index] = true;
        qDebug("Animation frame %s can't be read: %s", qUtf8Printable(file),
               qUtf8Printable(reason));
    }
    return image;
}
