#pragma once

#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/RecordingSocket.h"

#include <QByteArray>
#include <QDomDocument>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// One XML element, as the constructors of the map's objects take it.
class Element
{
public:
    explicit Element(const QString& content, const QString& name = QStringLiteral("e"))
    {
        m_document.setContent(QStringLiteral("<%1>%2</%1>").arg(name, content));
        m_node = m_document.documentElement();
    }
    QDomNode* node() { return &m_node; }

private:
    QDomDocument m_document;
    QDomNode m_node;
};

/// A file that lives as long as this.
class TextFile
{
public:
    explicit TextFile(const QByteArray& text, const QString& name = QStringLiteral("test.map"))
        : m_path(m_folder.filePath(name))
    {
        QFile file(m_path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text);
        }
    }
    const QString& path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// A model whose packets are kept, past those of the start.
struct TestModel
{
    TestModel() { socket->sent.clear(); }
    /// Also loads a map with this content between its root's tags.
    explicit TestModel(const QByteArray& content)
        : TestModel()
    {
        const TextFile file("<map>" + content + "</map>");
        loaded = model.load(file.path());
    }

    RecordingSocket* socket = new RecordingSocket; // owned by the model
    MapModel model{std::unique_ptr<TalvisSocket>(socket)};
    bool loaded = false;
};

inline QByteArray lightXml(const char* uid, int port, int channel, const QByteArray& more = {})
{
    return "<light><self>" + QByteArray(uid) + "</self><pn>" + QByteArray::number(port) +
           "</pn><ch>" + QByteArray::number(channel) + "</ch>" + more + "</light>";
}

inline QByteArray groupXml(const char* uid, int type, const QList<QByteArray>& children)
{
    QByteArray xml = "<group><type>" + QByteArray::number(type) + "</type><self>" +
                     QByteArray(uid) + "</self><name>G" + QByteArray(uid) + "</name>";
    for (const QByteArray& child : children) {
        xml += "<child>" + child + "</child>";
    }
    return xml + "</group>";
}
