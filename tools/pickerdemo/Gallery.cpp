#include "Gallery.h"

#include "color/GroupProfile.h"
#include "color/VelaColor.h"
#include "color/VelaColorLibrary.h"
#include "picker/ColorPickerWidget.h"
#include "picker/ColorTreeAndFilterWidget.h"
#include "picker/ColorViewWidget.h"
#include "picker/FilterBox.h"
#include "picker/VelaColorLibraryTreeView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <functional>

using namespace VelaColorPickerLib;

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 680;
constexpr int kSettleMs = 400; // a window manager and a paint

class Studio
{
public:
    explicit Studio(const QString& folder);
    bool shootAll();

private:
    static void settle();
    bool shoot(const QString& name);
    bool shootMenu(QWidget* widget, const QPoint& pos, const QString& name);

    QDir m_folder;
    QDialog m_dialog;
    ColorPickerWidget* m_picker;
    VelaColorLibraryTreeView* m_tree;
    VelaWidgetsLib::FilterBox* m_filter;
};

Studio::Studio(const QString& folder)
    : m_folder(folder)
    , m_picker(new ColorPickerWidget(&m_dialog))
    , m_tree(m_picker->findChild<VelaColorLibraryTreeView*>())
    , m_filter(m_picker->findChild<VelaWidgetsLib::FilterBox*>())
{
    m_dialog.setWindowTitle(QStringLiteral("Select Color"));
    auto* const box = new QVBoxLayout(&m_dialog);
    box->addWidget(m_picker);
    m_dialog.resize(kWidth, kHeight);

    VelaColorLibrary* const library = VelaColorLibrary::instance();
    const QString project = VelaColorLibrary::projectListName();
    library->insertColor(VelaColor(QColor(0xe8, 0x6a, 0x17)), QStringLiteral("Facade amber"),
                         QString(), project, QStringLiteral("F-01"));
    library->insertColor(VelaColor(QColor(0x16, 0x4f, 0x9c)), QStringLiteral("Harbour blue"),
                         QString(), project, QStringLiteral("F-02"));
    library->insertColor(VelaColor(0.43387, 0.40319), QStringLiteral("Arcade white"), QString(),
                         project, QStringLiteral("F-03"));

    const std::array<VelaColor, 3> comparisons = {VelaColor(QColor(0x16, 0x4f, 0x9c)),
                                                  VelaColor(0.43387, 0.40319),
                                                  VelaColor(QColor(200, 30, 90, 120))};
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        m_picker->findChild<ColorViewWidget*>(QStringLiteral("comparisonSwatch%1").arg(i + 1))
            ->setColor(comparisons[i], QString());
    }
    GroupProfile profile;
    profile.profileId = 24; // red, green, blue, amber, white
    m_picker->setProfiles({profile});
    m_picker->setPrimaryProfile(profile);
}

void Studio::settle()
{
    QEventLoop loop;
    QTimer::singleShot(kSettleMs, &loop, &QEventLoop::quit);
    loop.exec();
}

bool Studio::shoot(const QString& name)
{
    settle();
    return m_dialog.grab().save(m_folder.filePath(name));
}

/// What the screen shows of the window, an open menu included.
bool Studio::shootMenu(QWidget* widget, const QPoint& pos, const QString& name)
{
    bool saved = false;
    QTimer::singleShot(kSettleMs, widget, [this, &saved, &name] {
        const QRect frame = m_dialog.geometry();
        const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow(
            0, frame.x(), frame.y(), frame.width(), frame.height());
        saved = picture.save(m_folder.filePath(name));
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            menu->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, widget->mapToGlobal(pos));
    QApplication::sendEvent(widget, &event);
    return saved;
}

bool Studio::shootAll()
{
    m_dialog.show();
    m_picker->setColor(VelaColor(QColor(0xe8, 0x6a, 0x17)));
    bool done = shoot(QStringLiteral("picker-rgb.png"));
    m_picker->setColor(VelaColor(0.38177, 0.37959));
    done = shoot(QStringLiteral("picker-white.png")) && done;
    m_picker->setColor(VelaColor::fromNchannelF({1.0, 1.0, 0.45, 0.05, 0.8, 0.3}, 2, 24, false));
    done = shoot(QStringLiteral("picker-channels.png")) && done;

    m_picker->setColor(VelaColor(QColor(0xe8, 0x6a, 0x17)));
    settle();
    auto* const swatch = m_picker->findChild<ColorViewWidget*>(QStringLiteral("comparisonSwatch1"));
    done = shootMenu(swatch, swatch->rect().center(), QStringLiteral("picker-swatch-menu.png")) &&
           done;
    const VelaColorLibrary* const library = VelaColorLibrary::instance();
    const QModelIndex project = library->listIndex(VelaColorLibrary::projectListName());
    m_tree->showItem(library->index(1, 0, project));
    settle();
    done = shootMenu(m_tree->viewport(), m_tree->visualRect(m_tree->currentIndex()).center(),
                     QStringLiteral("picker-tree-menu.png")) &&
           done;
    m_filter->setText(QStringLiteral("white"));
    return shoot(QStringLiteral("picker-filter.png")) && done;
}

} // namespace

bool writeGallery(const QString& folder)
{
    return QDir().mkpath(folder) && Studio(folder).shootAll();
}
