#pragma once

#include "engine/EffectFactory.h"
#include "tests/app/WindowBench.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <random>

/// Seeded chance.
class Chance
{
public:
    explicit Chance(unsigned seed)
        : m_engine(seed)
    {}
    /// 0 to `count` - 1; 0 for no count at all.
    int below(int count) { return count > 0 ? static_cast<int>(m_engine() % unsigned(count)) : 0; }
    int between(int least, int most) { return least + below(most - least + 1); }
    bool percent(int share) { return below(100) < share; }
    template <typename List>
    auto of(const List& list)
    {
        return list.at(below(list.size()));
    }

private:
    std::mt19937 m_engine;
};

/// The folder that a random user has: examples, broken and missing files, and none besides.
class RandomFiles
{
public:
    explicit RandomFiles(const QString& folder)
        : m_dir(folder)
    {}

    bool make()
    {
        bool good = true;
        for (const char* const name :
             {"examples/ring", "examples/facade", "examples/facade/gull", "examples/ring/wheel"}) {
            good = good && copyFolder(QString::fromLatin1(name));
        }
        good = good && m_dir.mkpath(QStringLiteral("folder.sho")) &&
               m_dir.mkpath(QStringLiteral("sealed"));
        const QByteArray ring = read(QStringLiteral("examples/ring/ring.sho"));
        const QByteArray map = read(QStringLiteral("examples/ring/ring.map"));
        good = good && !ring.isEmpty() && !map.isEmpty();
        good = good && write("cut.sho", ring.left(ring.size() / 2));
        good = good && write("cut.map", map.left(map.size() / 2));
        good = good && write("junk.sho", QByteArray(5000, '\x03'));
        good = good && write("junk.map", QByteArray(5000, '<'));
        good = good && write("empty.sho", QByteArray());
        good = good &&
               write("short.sho", WindowBench::rootXml(WindowBench::effectXml(1, 1500)).toUtf8());
        good = good &&
               write("ring of links.sho",
                     WindowBench::rootXml(linked(1, 2) + linked(2, 3) + linked(3, 1)).toUtf8());
        QString all;
        for (int number = 0; number < EffectFactory::kTypeCount; ++number) {
            all += WindowBench::effectXml(number + 1, 1000U + 500U * unsigned(number), QString(),
                                          EffectFactory::typeName(number));
        }
        good = good && write("every type.sho", WindowBench::rootXml(all).toUtf8());
        QFile::setPermissions(m_dir.filePath(QStringLiteral("sealed")),
                              QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        return good;
    }
    void unseal() const
    {
        QFile::setPermissions(m_dir.filePath(QStringLiteral("sealed")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                  QFileDevice::ExeOwner);
    }

    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString map(Chance* chance) const
    {
        return path(chance->of(QStringList{
            QStringLiteral("examples/ring/ring.map"), QStringLiteral("examples/ring/ring.map"),
            QStringLiteral("examples/facade/facade.map"), QStringLiteral("cut.map"),
            QStringLiteral("junk.map"), QStringLiteral("missing.map")}));
    }
    QString show(Chance* chance) const
    {
        return path(chance->of(QStringList{
            QStringLiteral("examples/ring/ring.sho"),
            QStringLiteral("examples/facade/all-effects.sho"), QStringLiteral("every type.sho"),
            QStringLiteral("ring of links.sho"), QStringLiteral("saved.sho"),
            QStringLiteral("cut.sho"), QStringLiteral("junk.sho"), QStringLiteral("empty.sho"),
            QStringLiteral("missing.sho")}));
    }
    QString anything(Chance* chance) const
    {
        switch (chance->below(4)) {
        case 0:
            return map(chance);
        case 1:
            return show(chance);
        default:
            return path(chance->of(QStringList{
                QStringLiteral("examples/ring/rosette.png"),
                QStringLiteral("examples/facade/hills.png"), QStringLiteral("examples/ring/wheel"),
                QStringLiteral("examples/facade/gull"), QStringLiteral("folder.sho"),
                QStringLiteral("missing")}));
        }
    }
    /// Of files that may be written, and such that can't.
    QString target(Chance* chance) const
    {
        return path(chance->of(
            QStringList{QStringLiteral("saved.sho"), QStringLiteral("saved"),
                        QStringLiteral("other.txt"), QStringLiteral("missing folder/a.sho"),
                        QStringLiteral("sealed/a.sho"), QStringLiteral("folder.sho")}));
    }

    /// What is typed into a field.
    static QString text(Chance* chance)
    {
        static const QStringList kTexts = {
            QString(),
            QStringLiteral("0"),
            QStringLiteral("1"),
            QStringLiteral("2.5"),
            QStringLiteral("7"),
            QStringLiteral("12.345"),
            QStringLiteral("30"),
            QStringLiteral("0.001"),
            QStringLiteral("-1"),
            QStringLiteral("-0.5"),
            QStringLiteral("4294967.295"),
            QStringLiteral("4294967296"),
            QStringLiteral("1e308"),
            QStringLiteral("-1e308"),
            QStringLiteral("1e-320"),
            QStringLiteral("nan"),
            QStringLiteral("inf"),
            QStringLiteral("-inf"),
            QStringLiteral("1,5"),
            QStringLiteral("0x10"),
            QStringLiteral(" 3 "),
            QStringLiteral("%1 %n &Tom & Jerry"),
            QStringLiteral("<effect><name>&amp;</name>]]>"),
            QString::fromUtf8("B\xc3\xbchne \xe2\x86\x92 \xf0\x9f\x92\xa1"),
            QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d e\xcc\x81\xcc\x81"),
            QStringLiteral("a\tb\nc"),
            QString(QChar(0x01)) + QChar(0x07) + QChar(0x1b) + QChar(0x7f),
            QString(QChar(0xd800)) + QLatin1Char('x'),
            QString(QChar(0xfffe)) + QChar(0xffff),
            QString(3, QChar(0)),
            QStringLiteral("examples/ring/rosette.png"),
            QStringLiteral("examples/ring/wheel"),
            QString(3000, QLatin1Char('9')),
        };
        return chance->percent(1) ? QString(1 << 20, QLatin1Char('8')) : chance->of(kTexts);
    }

    /// What lies on the clipboard.
    static QString clipboard(Chance* chance)
    {
        const QString mark = QStringLiteral("<EFFECT-ENTRY>\n");
        const auto entry = [&] {
            const int type = chance->below(EffectFactory::kTypeCount);
            QString more = chance->percent(50) ? links(chance) : QString();
            if (chance->percent(20)) {
                more += QStringLiteral("<priority>%1</priority><fadein>4294967295</fadein>")
                            .arg(chance->below(5));
            }
            if (type == EffectFactory::kMetaEffect) {
                more += WindowBench::effectXml(1, 700) + WindowBench::effectXml(1, 900);
            }
            return mark + WindowBench::effectXml(chance->between(1, 20),
                                                 unsigned(chance->between(0, 9000)), more,
                                                 EffectFactory::typeName(type));
        };
        switch (chance->below(12)) {
        case 0:
            return text(chance);
        case 1:
            return QString(1 << 20, QLatin1Char('<'));
        case 2:
            return entry().left(chance->between(1, 200));
        case 3:
            return (mark + QLatin1Char('x')).repeated(2000);
        case 4:
            return mark + QStringLiteral("<effect>").repeated(10000);
        case 5:
            return entry() + entry().left(80) + entry();
        case 6:
            return mark + WindowBench::rootXml(
                              WindowBench::rootXml(WindowBench::effectXml(7, 400, links(chance))));
        case 7:
            return mark +
                   WindowBench::effectXml(
                       3, 500, QStringLiteral("<name>%1</name>").arg(text(chance).toHtmlEscaped()));
        default:
            return entry();
        }
    }

private:
    static QString linked(int eid, int to)
    {
        return WindowBench::effectXml(
            eid, 1000,
            QStringLiteral("<starttype>1</starttype><startlinkeid>%1</startlinkeid>"
                           "<startlinkstart>0</startlinkstart>")
                .arg(to));
    }
    static QString links(Chance* chance)
    {
        return QStringLiteral("<starttype>%1</starttype><startlinkeid>%2</startlinkeid>"
                              "<startlinkstart>%3</startlinkstart>"
                              "<startlinkoffset>%4</startlinkoffset>"
                              "<endtype>%5</endtype><endlinkeid>%6</endlinkeid>"
                              "<endcyclecount>%7</endcyclecount>")
            .arg(chance->below(2))
            .arg(chance->between(1, 25))
            .arg(chance->below(2))
            .arg(chance->between(-3000, 3000))
            .arg(chance->below(3))
            .arg(chance->between(1, 25))
            .arg(chance->between(0, 3));
    }
    bool copyFolder(const QString& name) const
    {
        const QDir source(QStringLiteral(FORGE_SOURCE_DIR) + QLatin1Char('/') + name);
        bool good = m_dir.mkpath(name);
        const QStringList files = source.entryList(QDir::Files);
        for (const QString& file : files) {
            good = good && QFile::copy(source.filePath(file),
                                       m_dir.filePath(name + QLatin1Char('/') + file));
        }
        return good && !files.isEmpty();
    }
    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool write(const char* name, const QByteArray& bytes) const
    {
        QFile file(path(QString::fromLatin1(name)));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    QDir m_dir;
};
