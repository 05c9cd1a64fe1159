#pragma once

#include "app/ForgeWindow.h"
#include "editor/MetaWidget.h"
#include "editor/PlaybackWidget.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "sim/LightSim.h"
#include "tests/app/DialogAnswers.h"

#include <QAbstractGraphicsShapeItem>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QSettings>
#include <QSlider>
#include <QString>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

#include <memory>

/// A main window, its files and the answers to its dialogs, for one test function.
class WindowBench
{
public:
    static constexpr quint64 kGroup = 0x1000;

    /// Once for the process: settings in a folder of its own, resources, effects.
    static void prepare()
    {
        static const QTemporaryDir settings;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        initForgeResources();
        registerEffects();
    }
    static QSettings store()
    {
        return QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"));
    }

    WindowBench() { store().clear(); }
    ~WindowBench()
    {
        window.reset();
        store().clear();
    }
    WindowBench(const WindowBench&) = delete;
    WindowBench& operator=(const WindowBench&) = delete;

    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }
    /// The path of a new file with that content; empty where it couldn't be written.
    QString file(const char* name, const QString& content) const
    {
        QFile file(path(name));
        const QByteArray bytes = content.toUtf8();
        const bool good = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
        return good ? file.fileName() : QString();
    }
    static QString text(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    /// Two lights at one controller; group kGroup, "Facade", holds both.
    QString map(const char* name = "site.map") const
    {
        QString xml =
            QStringLiteral("<map><version>1</version>"
                           "<controller><type>2</type><self>C1</self><name>North</name>"
                           "<ipaddress>127.0.0.1</ipaddress><version>2</version><portlist>"
                           "<port><portnum>1</portnum><porttype>1</porttype></port></portlist>"
                           "<light>A1</light><light>A2</light></controller>");
        for (int i = 1; i <= 2; ++i) {
            xml +=
                QStringLiteral("<light><self>A%1</self><name>L%1</name><controller>C1</controller>"
                               "<pn>0</pn><ch>%2</ch><x>%3</x><y>30</y></light>"
                               "<group><type>3</type><self>A%1</self><child>A%1</child></group>")
                    .arg(i)
                    .arg(3 * (i - 1))
                    .arg(40 * i);
        }
        xml += QStringLiteral("<group><type>2</type><self>1000</self><name>Facade</name>"
                              "<child>A1</child><child>A2</child></group></map>");
        return file(name, xml);
    }
    static QString effectXml(int eid, quint32 lengthMs, const QString& more = QString(),
                             const QString& type = QStringLiteral("Fixed Color"))
    {
        return QStringLiteral("<effect><type>%1</type><name>E%2</name><eid>%2</eid>"
                              "<gid>4096</gid><begin>0</begin><end>%3</end>"
                              "<endfixedtime>%3</endfixedtime>%4</effect>")
            .arg(type)
            .arg(eid)
            .arg(lengthMs)
            .arg(more);
    }
    static QString rootXml(const QString& children)
    {
        return QStringLiteral("<effect><type>Meta Effect</type>%1</effect>").arg(children);
    }
    /// A show of one effect.
    QString show(const char* name = "night.sho", quint32 lengthMs = 10000) const
    {
        return file(name, rootXml(effectXml(1, lengthMs)));
    }

    void open(const QString& mapFile = QString(), const QString& showFile = QString(),
              bool demoMode = false)
    {
        window = std::make_unique<ForgeWindow>(mapFile, showFile, demoMode, nullptr);
    }
    QAction* action(const char* name) const
    {
        return window->findChild<QAction*>(QString::fromLatin1(name));
    }
    EffectEngine* engine() const { return window->findChild<EffectEngine*>(); }
    MapModel* model() const { return window->findChild<MapModel*>(); }
    MetaWidget* editor() const { return window->findChild<MetaWidget*>(); }
    MetaEffect* root() const { return editor()->metaEffect(); }
    QTableWidget* table() const
    {
        return window->findChild<QTableWidget*>(QStringLiteral("effectTable"));
    }
    QSlider* slider() const { return window->findChild<QSlider*>(QStringLiteral("m_showSlider")); }
    QToolButton* pauseButton() const
    {
        return window->findChild<QToolButton*>(QStringLiteral("m_pauseButton"));
    }
    QLabel* currentTime() const
    {
        return window->findChild<QLabel*>(QStringLiteral("currentTime"));
    }
    QLabel* totalTime() const { return window->findChild<QLabel*>(QStringLiteral("totalTime")); }
    QTimer* sliderTimer() const
    {
        return window->findChild<QTimer*>(QStringLiteral("m_sliderTimer"));
    }
    /// The simulation window, with the main window as its parent or by itself; null for none.
    static LightSim* sim()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows) {
            if (auto* found = qobject_cast<LightSim*>(candidate)) {
                return found;
            }
        }
        return nullptr;
    }
    /// What the simulation draws for the lights, in no particular order.
    static QList<QAbstractGraphicsShapeItem*> simShapes()
    {
        QList<QAbstractGraphicsShapeItem*> shapes;
        const QList<QGraphicsItem*> items = sim()->findChild<QGraphicsView*>()->scene()->items();
        for (QGraphicsItem* item : items) {
            if (auto* shape = dynamic_cast<QAbstractGraphicsShapeItem*>(item)) {
                shapes.append(shape);
            }
        }
        return shapes;
    }
    bool isRunning() const { return !engine()->isPaused(); }

    QTemporaryDir dir;
    DialogAnswers dialogs;
    std::unique_ptr<ForgeWindow> window;
};
