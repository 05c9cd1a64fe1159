#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QProgressDialog>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

/// Answers the modal dialogs that a test provokes, in the order in which they are expected, and
/// notes what each of them said. One that nobody expects is noted and closed, so that the test
/// fails instead of waiting for ever. Progress dialogs are left alone.
class DialogAnswers : public QObject
{
public:
    struct Seen
    {
        QString title;
        QString text;
        QStringList buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        Qt::WindowFlags flags;
        QString folder;
        QStringList filters;
        QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptOpen;
    };
    using Answer = std::function<void(QWidget*)>;

    DialogAnswers()
    {
        m_timer.setInterval(1);
        connect(&m_timer, &QTimer::timeout, this, &DialogAnswers::look);
        m_timer.start();
    }

    void expect(const Answer& answer) { m_answers.append(answer); }
    /// Of a message box: presses the button of that text.
    void expectBox(const QString& button)
    {
        expect([this, button](QWidget* dialog) {
            auto* box = qobject_cast<QMessageBox*>(dialog);
            if (box != nullptr) {
                const QList<QAbstractButton*> buttons = box->buttons();
                for (QAbstractButton* candidate : buttons) {
                    if (plain(candidate->text()) == button) {
                        candidate->click();
                        return;
                    }
                }
            }
            giveUp(dialog);
        });
    }
    /// Of a file dialog: types the path and accepts.
    void expectFile(const QString& path)
    {
        expect([this, path](QWidget* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (edit == nullptr) {
                giveUp(dialog);
                return;
            }
            edit->setText(path);
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }
    void expectFileCancelled()
    {
        expect([this](QWidget* dialog) {
            auto* files = qobject_cast<QFileDialog*>(dialog);
            if (files == nullptr) {
                giveUp(dialog);
                return;
            }
            files->reject();
        });
    }

    /// Leaves every dialog alone from now on.
    void stop() { m_timer.stop(); }
    const QList<Seen>& seen() const { return m_seen; }
    /// What went otherwise than expected; empty where nothing did.
    QString complaints() const
    {
        QStringList list = m_complaints;
        if (!m_answers.isEmpty()) {
            list.append(QStringLiteral("%1 expected dialogs did not come").arg(m_answers.size()));
        }
        return list.join(QStringLiteral("; "));
    }

    static QString plain(QString text) { return text.remove(QLatin1Char('&')); }

private:
    void look()
    {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || m_met.contains(dialog) || !dialog->isVisible() ||
            qobject_cast<QProgressDialog*>(dialog) != nullptr) {
            return;
        }
        m_met.append(dialog);
        m_seen.append(describe(dialog));
        if (m_answers.isEmpty()) {
            giveUp(dialog);
            return;
        }
        // Queued: an answer may open the next dialog, in which this timer must still run.
        const Answer answer = m_answers.takeFirst();
        QTimer::singleShot(0, dialog, [answer, dialog] { answer(dialog); });
    }
    void giveUp(QWidget* dialog)
    {
        m_complaints.append(QStringLiteral("not expected: \"%1\"").arg(dialog->windowTitle()));
        QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
    }
    static Seen describe(QWidget* dialog)
    {
        Seen seen;
        seen.title = dialog->windowTitle();
        seen.flags = dialog->windowFlags();
        if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
            seen.text = box->text();
            seen.icon = box->icon();
            const QList<QAbstractButton*> buttons = box->buttons();
            for (const QAbstractButton* button : buttons) {
                seen.buttons.append(plain(button->text()));
            }
            seen.buttons.sort(); // their places are the platform's
        }
        if (const auto* files = qobject_cast<QFileDialog*>(dialog)) {
            seen.folder = files->directory().absolutePath();
            seen.filters = files->nameFilters();
            seen.acceptMode = files->acceptMode();
        }
        return seen;
    }

    QTimer m_timer;
    QList<Answer> m_answers;
    QList<QPointer<QWidget>> m_met;
    QList<Seen> m_seen;
    QStringList m_complaints;
};
