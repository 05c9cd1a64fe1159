#include "picker/ColorViewWidget.h"

#include "color/ColorMime.h"
#include "color/VelaColorLibrary.h"
#include "picker/SwatchPainter.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <qdrawutil.h>

#include <memory>

namespace VelaColorPickerLib {

namespace {

constexpr int kFrame = 4;     // the double ring of the selection, in its picture and on the widget
constexpr int kFocusRoom = 2; // around that, for the focus frame

} // namespace

ColorViewWidget::ColorViewWidget(Role role, QWidget* parent)
    : QWidget(parent)
    , m_role(role)
{
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    tellColor();
}

void ColorViewWidget::setColor(const VelaColor& color, const QString& uid)
{
    m_color = color;
    m_uid = uid;
    tellColor();
    update();
}

void ColorViewWidget::setSelected(bool selected)
{
    m_selected = selected;
    update();
}

QSize ColorViewWidget::sizeHint() const
{
    const int line = fontMetrics().height();
    return m_role == Role::Main ? QSize(6 * line, 6 * line) : QSize(5 * line, 6 * line);
}

QSize ColorViewWidget::minimumSizeHint() const
{
    const int line = fontMetrics().height();
    return m_role == Role::Main ? QSize(6 * line, 5 * line) : QSize(3 * line, 5 * line);
}

void ColorViewWidget::onAddToFavorites()
{
    emit addToFavorites(m_color);
}

void ColorViewWidget::onCopyToMainColor()
{
    emit copyToMainColor(m_color, m_uid);
}

void ColorViewWidget::onReset()
{
    giveColor(m_resetColor);
}

void ColorViewWidget::giveColor(const VelaColor& color)
{
    if (m_role == Role::Main && !m_selected) {
        emit selected();
    }
    setColor(color, QString());
    emit colorChanged(m_color, m_uid);
    if (!m_selected) {
        return;
    }
    if (m_color.spec() == VelaColor::Yxy) {
        emit openInWhitePicker(m_color, m_uid);
    } else {
        emit openInRGBPicker(m_color, m_uid);
    }
}

bool ColorViewWidget::takeFrom(const QMimeData* mime)
{
    VelaColor color;
    if (!ColorMime::readColor(mime, &color)) {
        return false;
    }
    giveColor(color);
    return true;
}

QString ColorViewWidget::describe() const
{
    return VelaColorLibrary::colorText(m_color);
}

QMimeData* ColorViewWidget::newMimeData() const
{
    auto mime = std::make_unique<QMimeData>();
    ColorMime::writeColor(mime.get(), m_color, describe(), QString(), QString());
    return mime.release();
}

QPixmap ColorViewWidget::dragPixmap() const
{
    const int side = 2 * fontMetrics().height();
    return swatchPixmap(m_color, QSize(side, side), devicePixelRatioF());
}

void ColorViewWidget::tellColor()
{
    const QString text = describe();
    const QString hint = m_role == Role::Main
                             ? tr("Click to edit this color.")
                             : tr("Click to edit this color, double-click to copy it to the "
                                  "main color.");
    setAccessibleDescription(text);
    setToolTip(text + QLatin1Char('\n') + hint);
}

void ColorViewWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRect framed = rect().adjusted(kFocusRoom, kFocusRoom, -kFocusRoom, -kFocusRoom);
    const QRect inner = framed.adjusted(kFrame, kFrame, -kFrame, -kFrame);
    paintSwatch(&painter, inner, m_color);
    if (m_selected) {
        const QPixmap ring(QStringLiteral(":/images/ColorSelection.png"));
        const QMargins margins(kFrame, kFrame, kFrame, kFrame);
        if (!ring.isNull()) {
            qDrawBorderPixmap(&painter, framed, margins, ring, ring.rect(), margins,
                              QTileRules(Qt::StretchTile), {});
        }
    } else {
        painter.setPen(QPen(swatchOutline(), 1.0));
        painter.drawRect(QRectF(inner).adjusted(-0.5, -0.5, 0.5, 0.5));
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), kFocusRoom));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

void ColorViewWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_pressed = true;
    m_pressPos = event->pos();
}

void ColorViewWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed ||
        (event->pos() - m_pressPos).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    m_pressed = false; // a drag is no click: it selects nothing
    auto* const drag = new QDrag(this);
    drag->setMimeData(newMimeData());
    drag->setPixmap(dragPixmap());
    drag->exec(Qt::CopyAction);
}

void ColorViewWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_pressed) {
        m_pressed = false;
        if (rect().contains(event->pos())) {
            emit selected();
        }
    }
}

void ColorViewWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_role == Role::Comparison) {
        m_pressed = false; // the release that follows selects nothing: the main colour is edited
        onCopyToMainColor();
        return;
    }
    QWidget::mouseDoubleClickEvent(event);
}

void ColorViewWidget::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    connect(menu.addAction(tr("Add to Project Swatches")), &QAction::triggered, this,
            &ColorViewWidget::onAddToFavorites);
    connect(menu.addAction(tr("Reset")), &QAction::triggered, this, &ColorViewWidget::onReset);
    menu.exec(event->globalPos());
}

void ColorViewWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setMimeData(newMimeData());
    } else if (event->matches(QKeySequence::Paste)) {
        takeFrom(QApplication::clipboard()->mimeData());
    } else if (event->key() == Qt::Key_Space) {
        emit selected();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ColorViewWidget::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->source() != this && ColorMime::readColor(event->mimeData(), nullptr)) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void ColorViewWidget::dropEvent(QDropEvent* event)
{
    if (takeFrom(event->mimeData())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

} // namespace VelaColorPickerLib
