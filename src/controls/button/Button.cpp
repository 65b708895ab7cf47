#include "data/ParameterKeys.h"
#include "core/Saturating.h"
#include "Button.h"
#include "core/Colors.h"
#include "core/DisabledLook.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

const QColor Button::defaultTextColor(230, 230, 230, 255);
const QColor Button::faceColor(62, 62, 62, 255);
const QColor Button::litColor(48, 140, 224, 255);
const QColor Button::frameColor(96, 96, 96, 255);

Button::Button(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

Button::~Button() = default;

const TagTable &Button::tags()
{
    static const TagTable table = TagTable::of<Button>(&BaseWidget::tags(), {
        {"OffImage", TagTable::trimmedText("offImage")},
        {"OnImage", TagTable::trimmedText("onImage")},
        {"Icon", TagTable::trimmedText("icon")},
        {"Text", TagTable::text("text")},
        {"OnText", TagTable::text("onText")},
        {"TextColor", TagTable::color("textColor")},
        {"Reverse", TagTable::boolean("reverse").ignoringCase().settingOnlyTrue()},
        {"ReadOnly", TagTable::boolean("readOnly").ignoringCase().settingOnlyTrue()},
    });
    return table;
}

// ---------------------------------------------------------------------------
// State

bool Button::isOn() const
{
    // A button that is not bound yet shows off rather than the "on" that
    // isOff() answers outside the address list.
    return addressCount() > 0 && addressAt(0).isValid() && !isOff(0);
}

void Button::clickAction()
{
    requestPosition(isOff(0) ? 1 : 0, 1, 0, 0);
}

void Button::setPressed(bool pressed)
{
    if (m_pressed == pressed)
        return;
    m_pressed = pressed;
    update();
}

void Button::setOperable(bool operable)
{
    if (m_operable == operable)
        return;
    m_operable = operable;
    if (!isOperable())
        setPressed(false);
    update();
}

void Button::setReadOnly(bool readOnly)
{
    if (m_readOnly == readOnly)
        return;
    m_readOnly = readOnly;
    if (readOnly)
        setPressed(false);
    update();
}

void Button::setReverse(bool reverse)
{
    if (m_reverse == reverse)
        return;
    m_reverse = reverse;
    update();
}

void Button::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    update();
}

void Button::setOnText(const QString &text)
{
    if (m_onText == text)
        return;
    m_onText = text;
    update();
}

void Button::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
}

void Button::setImageName(QString &member, const QString &name)
{
    if (member == name)
        return;
    // The name being replaced is not drawn any more, unless another image of the button uses it.
    const QString previous = member;
    member = name;
    if (previous != m_offImage && previous != m_onImage && previous != m_icon)
        m_imageCache.remove(previous);
    update();
}

void Button::setOffImage(const QString &name)
{
    setImageName(m_offImage, name);
}

void Button::setOnImage(const QString &name)
{
    setImageName(m_onImage, name);
}

void Button::setIcon(const QString &name)
{
    setImageName(m_icon, name);
}

void Button::setExtraImages(const QStringList &names)
{
    if (m_extraImages == names)
        return;
    m_extraImages = names;
    update();
}

QString Button::shownText() const
{
    return textFor(((displayState() & 2) != 0) != m_reverse);
}

QString Button::textFor(bool lit) const
{
    if (lit && !m_onText.isEmpty())
        return m_onText;
    if (!m_text.isEmpty() || !m_onText.isEmpty())
        return m_text;
    if (m_offImage.isEmpty() && m_onImage.isEmpty() && m_icon.isEmpty())
        return fallbackText();
    return QString();
}

QString Button::fallbackText() const
{
    return displayText(0);
}

// ---------------------------------------------------------------------------
// Description

// ---------------------------------------------------------------------------
// Input

void Button::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (!canOperate())
        return;
    const Qt::KeyboardModifiers mods = event->modifiers();
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    if (!(mods & (Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier))) {
        m_pressInside = true;
        setPressed(true);
    }
}

void Button::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed) {
        const bool inside = rect().contains(event->pos());
        if (inside != m_pressInside) {
            m_pressInside = inside;
            update();
        }
    }
    BaseWidget::mouseMoveEvent(event);
}

void Button::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier)) {
        controlClick(event);
        setPressed(false);
        return;
    }
    if (!m_pressed) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        clickAction();
    m_pressInside = true;
    setPressed(false);
}

void Button::keyPressEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat() || !isVisible() || checksParameterExistence() || !isActivationKey(event->key())) {
        BaseWidget::keyPressEvent(event);
        return;
    }
    if (canOperate()) {
        m_pressInside = true;
        setPressed(true);
    }
}

void Button::keyReleaseEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat() || !isVisible() || checksParameterExistence() || !m_pressed) {
        BaseWidget::keyReleaseEvent(event);
        return;
    }
    if (isActivationKey(event->key()))
        clickAction();
    setPressed(false);
}

void Button::focusOutEvent(QFocusEvent *event)
{
    // A key press whose release goes elsewhere must not leave the button down;
    // a mouse press keeps its grab and ends at the release.
    if (m_pressed && !(QApplication::mouseButtons() & Qt::LeftButton))
        setPressed(false);
    BaseWidget::focusOutEvent(event);
}

void Button::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        setPressed(false);
    BaseWidget::changeEvent(event);
}

// ---------------------------------------------------------------------------
// Dialogs

namespace {
// Remembered across buttons: library files of one project sit together.
QString lastFileFolder;
}

bool Button::askFileName(FileDialog kind, const QString &caption, const QString &filter, QString *path)
{
    return hostCore() && hostCore()->answerFileName(this, kind == FileDialog::Save, caption, filter, *path);
}

void Button::sendFile(FileDialog kind, QString path, const QString &extension)
{
    if (path.isEmpty())
        return;
    lastFileFolder = QFileInfo(path).absolutePath();
    if (kind == FileDialog::Save && !extension.isEmpty()
        && !path.endsWith(QLatin1Char('.') + extension, Qt::CaseInsensitive))
        path += QLatin1Char('.') + extension;
    requestText(path, 0);
}

void Button::sendChosenFile(FileDialog kind, const QString &caption, const QString &filter, const QString &extension)
{
    QString path;
    if (askFileName(kind, caption, filter, &path)) {
        sendFile(kind, path, extension);
        return;
    }
    if (m_fileDialog) {
        m_fileDialog->raise();
        return;
    }
    // Not exec()'d: the click returns at once and the choice arrives later.
    m_fileDialog = new QFileDialog(this, caption, lastFileFolder, filter);
    m_fileDialog->setAttribute(Qt::WA_DeleteOnClose);
    m_fileDialog->setWindowModality(Qt::NonModal);
    m_fileDialog->setAcceptMode(kind == FileDialog::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    m_fileDialog->setFileMode(kind == FileDialog::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    connect(m_fileDialog.data(), &QFileDialog::fileSelected, this,
            [this, kind, extension](const QString &chosen) { sendFile(kind, chosen, extension); });
    m_fileDialog->show();
}

// ---------------------------------------------------------------------------
// Images and painting

QString Button::imageBasePath() const
{
    return hostCore() ? hostCore()->imageBasePath() : QString();
}

QString Button::imagePath(const QString &name) const
{
    const QString found = ImageSource::resolve(name, imageBasePath());
    if (!found.isEmpty())
        return found;
    // Nothing there: where the name would be read from.
    const QString base = imageBasePath();
    if (name.startsWith(QLatin1Char(':')) || QDir::isAbsolutePath(name) || base.isEmpty())
        return name;
    return QDir(base).filePath(name);
}

QPixmap Button::image(const QString &name, const QSize &size, ImageSource::Options options)
{
    if (name.isEmpty() || size.isEmpty())
        return QPixmap();
    auto it = m_imageCache.find(name);
    if (it == m_imageCache.end())
        it = m_imageCache.insert(name, ImageSource(name));
    // A name is looked up once, in the host's image folder of the time it is first drawn.
    if (!it->isResolved())
        it->path(imageBasePath());
    return it->pixmap(size, devicePixelRatioF(), it->resolvedBasePath(), options);
}

int Button::paintedState() const
{
    const int state = displayState();
    return m_pressInside ? state : state & ~1;
}

void Button::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintButton(painter, paintedState());
    paintBase(painter);
}

void Button::paintFace(QPainter &painter, bool lit, bool down)
{
    const bool flat = isFlat();
    if (flat && !lit && !down)
        return;
    QColor fill = lit ? litColor : faceColor;
    if (flat && !lit)
        fill = Colors::color(Colors::flatButtonDown);
    else if (down)
        fill = fill.darker(140);
    fill = DisabledLook::faded(fill, isEnabled());
    const qreal radius = qMax<qreal>(2.0, 3.0 * zoomFactor());
    painter.save();
    if (flat)
        painter.setPen(Qt::NoPen);
    else
        painter.setPen(QPen(lit ? litColor.lighter(125) : frameColor, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void Button::paintButton(QPainter &painter, int state)
{
    const bool lit = ((state & 2) != 0) != m_reverse;
    const bool down = state & 1;
    const QString faceImage = lit ? m_onImage : m_offImage;
    const QPixmap face = image(faceImage, size(), down ? ImageSource::Pressed : ImageSource::Stretch);
    if (face.isNull())
        paintFace(painter, lit, down);
    else
        painter.drawPixmap(0, 0, face);
    paintDecoration(painter, state);

    const int pad = qMax(2, Saturating::pixels(3, zoomFactor()));
    QRect content = rect().adjusted(pad, pad, -pad, -pad);
    if (content.isEmpty())
        return;
    const QString label = textFor(lit);
    if (!m_icon.isEmpty()) {
        QRect iconRect = content;
        if (!label.isEmpty()) {
            iconRect.setWidth(qMin(content.height(), content.width() / 2));
            content.setLeft(iconRect.right() + 1 + pad);
        }
        const QPixmap iconImage = image(m_icon, iconRect.size(), ImageSource::KeepAspect);
        if (!iconImage.isNull())
            painter.drawPixmap(iconRect.topLeft(), iconImage);
    }
    if (label.isEmpty())
        return;
    painter.setPen(DisabledLook::faded(m_textColor, isEnabled()));
    painter.setFont(font());
    const QString elided = painter.fontMetrics().elidedText(label, Qt::ElideRight, content.width());
    painter.drawText(content, Qt::AlignCenter, elided);
}
