#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

/// Writes a whole file; false when it can't.
inline bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// Collects what is logged while it lives, instead of printing it.
class LogCapture
{
public:
    LogCapture()
        : m_former(qInstallMessageHandler(handle))
    {
        lines().clear();
    }
    ~LogCapture() { qInstallMessageHandler(m_former); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    static QStringList& lines()
    {
        static QStringList list;
        return list;
    }

private:
    static void handle(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                       const QString& text)
    {
        lines().append(text);
    }

    QtMessageHandler m_former;
};
