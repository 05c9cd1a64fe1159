#pragma once

#include "tests/app/RandomHand.h"
#include "tests/app/ShowRules.h"

#include <QDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QInputDialog>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

#include <ctime>
#include <functional>

/// Uses a window at random, with events as a mouse and a keyboard make them. One event at a time;
/// the next one comes from the event loop, also from that of a dialog that the event before has
/// opened. Events go where the modal dialog or the popup lets them.
class RandomUser : public RandomHand
{
public:
    using PassTime = std::function<void(int ms)>;

    RandomUser(unsigned seed, WindowBench* bench, const RandomFiles& files, PassTime passTime)
        : RandomHand(seed)
        , m_bench(bench)
        , m_files(files)
        , m_passTime(std::move(passTime))
    {
        EventLog::instance().start(seed);
    }
    ~RandomUser() override { EventLog::instance().stop(); }

    /// Runs the program, and again where the user leaves it, until that many events are made.
    void use(int events)
    {
        m_left = events;
        while (m_left > 0 && m_complaint.isEmpty()) {
            ++m_runs;
            beginSoon();
            QApplication::exec();
            QApplication::setQuitOnLastWindowClosed(false);
            m_bench->window.reset();
        }
    }
    /// What was found wrong; empty for nothing.
    const QString& complaint() const { return m_complaint; }
    int runs() const { return m_runs; }
    int dialogsMet() const { return m_dialogsMet; }

private:
    static constexpr int kPeriod = 20; // events between two looks at everything
    static constexpr int kMostEffects = 40;
    static constexpr int kMostPatience = 10000; // turns in which nothing could be done
    static constexpr quint32 kLongestExportMs = 20000;
    // Of the processor's time between two events.
#ifdef __SANITIZE_ADDRESS__
    static constexpr std::clock_t kLongestTurn = 20 * CLOCKS_PER_SEC;
#else
    static constexpr std::clock_t kLongestTurn = 3 * CLOCKS_PER_SEC;
#endif

    /// Each turn arranges for its successor first: a dialog's own loop then runs that.
    void beginSoon()
    {
        if (!m_isAwaited) {
            m_isAwaited = true;
            auto* timer = new QTimer(this);
            timer->setSingleShot(true);
            connect(timer, &QTimer::timeout, this, [this, timer] {
                timer->deleteLater();
                m_isAwaited = false;
                turn();
            });
            timer->start(0);
        }
    }

    void turn()
    {
        if (m_depth == 0 && (m_left <= 0 || !m_complaint.isEmpty())) {
            QApplication::exit(0);
            return;
        }
        beginSoon();
        const std::clock_t now = std::clock();
        if (now - m_lastTurn > kLongestTurn && m_lastTurn != 0) {
            complain(QStringLiteral("busy for %1 s").arg((now - m_lastTurn) / CLOCKS_PER_SEC));
        }
        m_lastTurn = now;
        ++m_depth;
        if (m_depth == 1) {
            outerTurn();
        } else {
            innerTurn();
        }
        --m_depth;
    }

    void outerTurn()
    {
        if (m_bench->window == nullptr) {
            openWindow();
            return;
        }
        const QPointer<MetaEffect> root(m_bench->root());
        const uint before = ShowRules::fingerprint(*root);
        const bool wasRunning = m_bench->isRunning();
        m_excuses = NoExcuse;
        --m_left;
        passTime();
        act();
        checkAfter(root, before, wasRunning);
        if (m_left % kPeriod == 0 && modal() == nullptr && m_complaint.isEmpty()) {
            complain(ShowRules(*m_bench).all());
        }
    }

    void openWindow()
    {
        const QString map = m_runs == 1 || m_chance.percent(80)
                                ? m_files.path(QStringLiteral("examples/ring/ring.map"))
                                : m_files.map(&m_chance);
        const QString show = m_runs == 1 || m_chance.percent(50)
                                 ? m_files.path(QStringLiteral("examples/ring/ring.sho"))
                                 : m_files.show(&m_chance);
        const bool demo = m_chance.percent(30);
        EventLog::instance().add(QStringLiteral("start %1 %2 %3").arg(map, show).arg(demo));
        // The program opens its window before its event loop runs; a dialog of that time ends none.
        QApplication::setQuitOnLastWindowClosed(false);
        m_bench->open(map, show, demo);
        ForgeWindow* const window = m_bench->window.get();
        window->show();
        window->activateWindow();
        QApplication::setQuitOnLastWindowClosed(true);
        connect(m_bench->action("pasteEffectAction"), &QAction::triggered, this,
                [this] { m_excuses |= Pasted; });
        const QList<QMenu*> menus = m_bench->editor()->findChildren<QMenu*>();
        for (const QMenu* const menu : menus) {
            const QList<QAction*> actions = menu->actions();
            for (const QAction* const action : actions) {
                if (action->text() == QLatin1String("Paste Selected Effects")) {
                    connect(action, &QAction::triggered, this, [this] { m_excuses |= Pasted; });
                }
            }
        }
        for (const char* const name : {"saveShowAction", "saveShowAsAction"}) {
            connect(m_bench->action(name), &QAction::triggered, this,
                    [this] { m_excuses |= Saved; });
        }
        connect(m_bench->action("writeDMXAction"), &QAction::triggered, this,
                [this] { m_excuses |= Exported; });
    }

    /// A dialog or a popup has the input, or the program is busy.
    void innerTurn()
    {
        // How often a busy program comes here is chance, but not the seed's.
        QWidget* const dialog = modal();
        if (qobject_cast<QProgressDialog*>(dialog) != nullptr) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            return;
        }
        if (dialog == nullptr && QApplication::activePopupWidget() == nullptr) {
            if (++m_idleTurns > kMostPatience) {
                complain(QStringLiteral("nothing to do in a loop of its own"));
            }
            return;
        }
        m_idleTurns = 0;
        passTime();
        act();
    }

    static QWidget* modal()
    {
        return QApplication::activeModalWidget();
    }

    void complain(const QString& text)
    {
        if (m_complaint.isEmpty() && !text.isEmpty()) {
            m_complaint = text;
            EventLog::instance().tell();
        }
    }

    /// What no event may do.
    void checkAfter(const QPointer<MetaEffect>& root, uint before, bool wasRunning)
    {
        if (m_bench->window == nullptr || !m_complaint.isEmpty()) {
            return;
        }
        const bool isSame = !root.isNull() && root == m_bench->root();
        if (isSame && (m_excuses & (Pasted | Saved | AskedToSave)) == 0 &&
            ShowRules::fingerprint(*root) != before && !m_bench->editor()->isModified()) {
            complain(QStringLiteral("changed, but not marked so"));
        }
        const bool mayPause = m_bench->pauseButton()->isChecked() ||
                              m_bench->slider()->isSliderDown() ||
                              (m_excuses & (AskedForFile | AskedToSave | Exported)) != 0;
        if (wasRunning && !m_bench->isRunning() && !mayPause) {
            complain(QStringLiteral("left paused"));
        }
    }

    void passTime()
    {
        m_passTime(m_chance.percent(3) ? m_chance.between(5000, 40000) : m_chance.between(10, 400));
        if (m_bench->window != nullptr && m_bench->isRunning()) {
            m_bench->engine()->handleTimer();
        }
    }

    void act()
    {
        if (QWidget* const popup = QApplication::activePopupWidget()) {
            usePopup(popup);
        } else if (QWidget* const dialog = modal()) {
            useDialog(dialog);
        } else {
            useWindow();
        }
    }

    // The main window, and the simulation beside it.
    void useWindow()
    {
        ForgeWindow* const window = m_bench->window.get();
        LightSim* const sim = WindowBench::sim();
        if (!window->isVisible()) {
            note(QStringLiteral("leave"));
            if (sim != nullptr && sim->isVisible()) {
                sim->close();
            } else {
                QApplication::exit(0);
            }
            return;
        }
        if (QApplication::activeWindow() == nullptr) {
            window->activateWindow(); // there is no window manager to do so behind a dialog
        }
        if (sim != nullptr && sim->isVisible() && m_chance.percent(5)) {
            useWidgetIn(sim);
            return;
        }
        if (m_bench->root()->effectList().size() > kMostEffects) {
            trigger(m_bench->action("newShowAction"));
            return;
        }
        const int dice = m_chance.below(100);
        if (dice < 30) {
            useTable();
        } else if (dice < 70) {
            useWidgetIn(window);
        } else if (dice < 80) {
            pressKey(window);
        } else if (dice < 88) {
            trigger(
                m_chance.of(window->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)));
        } else if (dice < 90) {
            openMenu(window);
        } else if (dice < 93) {
            fillClipboard();
        } else if (dice < 95) {
            dragSlider();
        } else if (dice < 97) {
            togglePause();
        } else if (dice < 98) {
            note(QStringLiteral("resize"));
            window->resize(m_chance.between(100, 2500), m_chance.between(100, 1500));
        } else {
            newEffect();
        }
    }

    void trigger(QAction* action)
    {
        if (action->isEnabled() && mayChoose(*action)) {
            note(QStringLiteral("trigger ") + action->objectName());
            action->trigger();
        }
    }

    void openMenu(QWidget* window)
    {
        const Qt::Key key = m_chance.of(QList<Qt::Key>{Qt::Key_F, Qt::Key_E, Qt::Key_S, Qt::Key_H});
        note(QStringLiteral("Alt+%1").arg(QChar(key)));
        QTest::keyClick(window, key, Qt::AltModifier);
    }

    void fillClipboard()
    {
        const QString text = RandomFiles::clipboard(&m_chance);
        note(QStringLiteral("clipboard of %1: %2").arg(text.size()).arg(text.left(60)));
        QGuiApplication::clipboard()->setText(text);
        if (m_chance.percent(60)) {
            note(QStringLiteral("paste"));
            m_bench->action("pasteEffectAction")->trigger();
        }
    }

    void dragSlider()
    {
        QSlider* const slider = m_bench->slider();
        const int y = slider->height() / 2;
        const int from = slider->value() * slider->width() / 500;
        note(QStringLiteral("drag"), slider);
        QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, QPoint(from, y));
        const int moves = m_chance.between(0, 5);
        for (int i = 0; i < moves; ++i) {
            QTest::mouseMove(slider, QPoint(m_chance.below(slider->width()), y));
            passTime();
        }
        if (m_chance.percent(80)) { // else it is held
            QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier,
                                QPoint(m_chance.below(slider->width()), y));
        }
    }

    void togglePause()
    {
        note(QStringLiteral("play or pause"));
        m_bench->pauseButton()->click();
        if (m_bench->pauseButton()->isChecked() && m_chance.percent(70)) {
            m_bench->pauseButton()->click();
        }
    }

    void newEffect()
    {
        auto* const box = m_bench->editor()->findChild<QComboBox*>(QStringLiteral("effectTypeBox"));
        auto* const button =
            m_bench->editor()->findChild<QPushButton*>(QStringLiteral("newEffectButton"));
        if (button->isEnabled()) {
            box->setCurrentIndex(m_chance.below(box->count()));
            note(QStringLiteral("new ") + box->currentText());
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    void useTable()
    {
        QTableWidget* const table = m_bench->table();
        if (table->rowCount() == 0 || !table->isEnabled()) {
            newEffect();
            return;
        }
        const int row = m_chance.below(table->rowCount());
        const int column = m_chance.below(MetaWidget::EidColumn);
        QTableWidgetItem* const item = table->item(row, column);
        table->scrollToItem(item);
        const QPoint place = table->visualItemRect(item).center();
        const QString where = QStringLiteral(" %1:%2").arg(row).arg(column);
        switch (m_chance.below(8)) {
        case 0:
        case 1:
            note(QStringLiteral("click") + where);
            QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
            break;
        case 2:
            note(QStringLiteral("double click") + where);
            QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
            break;
        case 3:
            contextMenu(table->viewport(), place);
            break;
        case 4: {
            auto* const box =
                qobject_cast<QComboBox*>(table->cellWidget(row, MetaWidget::TypeColumn));
            note(QStringLiteral("row type") + where);
            QTest::keyClick(box, m_chance.percent(50) ? Qt::Key_Down : Qt::Key_Up);
            break;
        }
        case 5:
            clickHeader(table);
            break;
        default:
            editCell(table, item, where);
            break;
        }
    }

    void editCell(QTableWidget* table, QTableWidgetItem* item, const QString& where)
    {
        table->setCurrentItem(item);
        note(QStringLiteral("F2") + where);
        table->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(table, Qt::Key_F2);
        QWidget* const focus = QApplication::focusWidget();
        if (focus == nullptr || !table->isAncestorOf(focus) || focus == table) {
            return;
        }
        type(focus);
        if (QApplication::focusWidget() == focus && m_chance.percent(80)) {
            finish(focus);
        }
    }

    void clickHeader(QTableWidget* table)
    {
        QHeaderView* const header = table->horizontalHeader();
        const int section = m_chance.below(MetaWidget::EidColumn);
        note(QStringLiteral("header %1").arg(section));
        const QPoint place(header->sectionViewportPosition(section) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }

    /// Of the main window, the form of the parameters and the times are used most.
    void useWidgetIn(QWidget* window)
    {
        QList<QWidget*> usable;
        QList<QWidget*> all = window->findChildren<QWidget*>();
        if (window == m_bench->window.get() && m_chance.percent(70)) {
            const char* const parts[] = {"parameterFrame", "parameterFrame", "startPanel",
                                         "endPanel"};
            const auto* const part =
                window->findChild<QWidget*>(QString::fromLatin1(parts[m_chance.below(4)]));
            all = part->findChildren<QWidget*>();
        }
        for (QWidget* const widget : qAsConst(all)) {
            if (widget->window() == window && widget->isVisible() && widget->isEnabled() &&
                isControl(widget)) {
                usable.append(widget);
            }
        }
        useWidget(usable.isEmpty() ? window : m_chance.of(usable));
    }

    void click(QWidget* target, const QPoint& place) override
    {
        const auto* const check = qobject_cast<QCheckBox*>(target);
        const bool preloads = check != nullptr && QString(check->text()).remove(QLatin1Char('&')) ==
                                                      QLatin1String("Preload");
        RandomHand::click(target, place);
        if (preloads && m_bench->window != nullptr && !m_bench->isRunning()) {
            complain(QStringLiteral("left paused by a preload"));
        }
    }

    // Dialogs.
    void useDialog(QWidget* dialog)
    {
        constexpr char kPatience[] = "randomPatience";
        if (!dialog->property(kPatience).isValid()) {
            ++m_dialogsMet;
            dialog->setProperty(kPatience, m_chance.between(0, 8));
            noteExcuse(dialog);
        }
        const int patience = dialog->property(kPatience).toInt();
        dialog->setProperty(kPatience, patience - 1);
        if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
            useFileDialog(files, patience);
        } else if (patience <= 0 || m_left <= 0 || !m_complaint.isEmpty()) {
            answer(dialog, patience);
        } else {
            useWidgetIn(dialog);
        }
    }

    void noteExcuse(const QWidget* dialog)
    {
        const QString title = dialog->windowTitle();
        if (qobject_cast<const QFileDialog*>(dialog) != nullptr) {
            m_excuses |= AskedForFile;
        } else if (const auto* const box = qobject_cast<const QMessageBox*>(dialog)) {
            if (box->text().startsWith(QLatin1String("Do you want to save"))) {
                m_excuses |= AskedToSave;
            }
        }
    }

    /// Only names are given: in its list, a user could rename and delete the files of the machine.
    void useFileDialog(QFileDialog* dialog, int patience)
    {
        auto* const edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        const bool saves = dialog->acceptMode() == QFileDialog::AcceptSave;
        const bool exports = dialog->windowTitle() == QLatin1String("Choose base DMX filename");
        const bool isLong = exports && m_bench->root()->end() > kLongestExportMs;
        if (patience < 0 || isLong || edit == nullptr || m_left <= 0 || m_chance.percent(25)) {
            note(QStringLiteral("reject"), dialog);
            if (m_chance.percent(50)) {
                QTest::keyClick(dialog, Qt::Key_Escape);
            } else {
                dialog->reject();
            }
            return;
        }
        QString path = m_files.anything(&m_chance);
        if (saves) {
            path = m_files.target(&m_chance);
        } else if (dialog->windowTitle().contains(QLatin1String("Map"))) {
            path = m_files.map(&m_chance);
        } else if (dialog->windowTitle().contains(QLatin1String("Show"))) {
            path = m_files.show(&m_chance);
        }
        dialog->setProperty("randomPatience", -1);
        note(QStringLiteral("file ") + path, dialog);
        edit->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    }

    void answer(QWidget* widget, int patience)
    {
        auto* const dialog = qobject_cast<QDialog*>(widget);
        if (dialog == nullptr) {
            note(QStringLiteral("close"), widget);
            widget->close();
            return;
        }
        if (auto* const input = qobject_cast<QInputDialog*>(dialog)) {
            input->setIntValue(m_chance.between(0, 60)); // an export at any rate takes its time
        }
        QList<QPushButton*> buttons;
        const QList<QPushButton*> all = dialog->findChildren<QPushButton*>();
        for (QPushButton* const button : all) {
            if (button->isVisible() && button->isEnabled() &&
                (qobject_cast<QMessageBox*>(dialog) != nullptr ||
                 button->text().contains(QLatin1String("OK")) ||
                 button->text().contains(QLatin1String("Cancel")))) {
                buttons.append(button);
            }
        }
        const int dice = m_chance.below(4);
        if (dice < 2 && !buttons.isEmpty() && patience > -3) {
            QPushButton* const button = m_chance.of(buttons);
            note(QStringLiteral("answer"), button);
            QTest::mouseClick(button, Qt::LeftButton);
        } else if (dice == 2) {
            note(QStringLiteral("escape"), dialog);
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else if (qobject_cast<QMessageBox*>(dialog) == nullptr && m_chance.percent(50)) {
            note(QStringLiteral("accept"), dialog);
            dialog->accept();
        } else {
            note(QStringLiteral("reject"), dialog);
            dialog->reject();
        }
    }

    enum Excuse : unsigned {
        NoExcuse = 0,
        Pasted = 1,
        Saved = 2,
        Exported = 4,
        AskedForFile = 8,
        AskedToSave = 16
    };

    WindowBench* m_bench;
    const RandomFiles& m_files;
    PassTime m_passTime;
    QString m_complaint;
    unsigned m_excuses = NoExcuse; // for what the present event does
    std::clock_t m_lastTurn = 0;
    int m_left = 0;
    int m_runs = 0;
    int m_dialogsMet = 0;
    int m_idleTurns = 0;
    bool m_isAwaited = false;
};
