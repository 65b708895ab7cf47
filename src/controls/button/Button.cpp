#include "data/ParameterKeys.h"
#include "core/Saturating.h"
#include "Button.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgRenderer>

const QColor Button::defaultTextColor(230, 230, 230, 255);
const QColor Button::faceColor(62, 62, 62, 255);
const QColor Button::litColor(48, 140, 224, 255);
const QColor Button::frameColor(96, 96, 96, 255);

namespace {

bool isSvg(const QString &path)
{
    return path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)
        || path.endsWith(QLatin1String(".svgz"), Qt::CaseInsensitive);
}

QImage centredIn(const QImage &image, const QSize &size)
{
    QImage out(size, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter p(&out);
    p.drawImage((size.width() - image.width()) / 2, (size.height() - image.height()) / 2, image);
    return out;
}

} // namespace

Button::Button(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

Button::~Button() = default;

const TagTable &Button::tags()
{
    static const TagTable table = TagTable::of<Button>(&BaseWidget::tags(), {
        {"OffImage", &Button::readOffImage},
        {"OnImage", &Button::readOnImage},
        {"Icon", &Button::readIcon},
        {"Text", &Button::readText},
        {"OnText", &Button::readOnText},
        {"TextColor", &Button::readTextColor},
        {"Reverse", &Button::readReverse},
        {"ReadOnly", &Button::readReadOnly},
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
    // Only the renderings of the name being replaced are stale.
    const QString prefix = member + QLatin1Char('|');
    for (auto it = m_imageCache.begin(); it != m_imageCache.end();) {
        if (it.key().startsWith(prefix))
            it = m_imageCache.erase(it);
        else
            ++it;
    }
    member = name;
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

QList<int> Button::ownAddressIndexes() const
{
    QList<int> indexes;
    for (int i = 0; i < addressCount(); ++i) {
        if (addressAt(i).key(Key::AddrType).isEmpty())
            indexes.append(i);
    }
    return indexes;
}

bool Button::setZoom(float zoom)
{
    if (!BaseWidget::setZoom(zoom))
        return false;
    m_imageCache.clear();
    return true;
}

// ---------------------------------------------------------------------------
// Description

bool Button::readOffImage(const QDomElement &e)
{
    setOffImage(e.text().trimmed());
    return true;
}

bool Button::readOnImage(const QDomElement &e)
{
    setOnImage(e.text().trimmed());
    return true;
}

bool Button::readIcon(const QDomElement &e)
{
    setIcon(e.text().trimmed());
    return true;
}

bool Button::readText(const QDomElement &e)
{
    setText(e.text());
    return true;
}

bool Button::readOnText(const QDomElement &e)
{
    setOnText(e.text());
    return true;
}

bool Button::readTextColor(const QDomElement &e)
{
    const QColor color = parseColor(e.text());
    if (!color.isValid())
        return false;
    setTextColor(color);
    return true;
}

bool Button::readReverse(const QDomElement &e)
{
    if (!isTrueIgnoringCase(e))
        return false;
    setReverse(true);
    return true;
}

bool Button::readReadOnly(const QDomElement &e)
{
    if (!isTrueIgnoringCase(e))
        return false;
    setReadOnly(true);
    return true;
}

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

QString Button::imagePath(const QString &name) const
{
    if (name.startsWith(QLatin1Char(':')) || QDir::isAbsolutePath(name) || !hostCore())
        return name;
    const QString base = hostCore()->imageBasePath();
    return base.isEmpty() ? name : QDir(base).filePath(name);
}

QImage Button::image(const QString &name, const QSize &size, bool keepAspect)
{
    if (name.isEmpty() || size.isEmpty())
        return QImage();
    const QString key = QStringLiteral("%1|%2x%3%4")
                            .arg(name)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(keepAspect ? QStringLiteral("a") : QString());
    const auto it = m_imageCache.constFind(key);
    if (it != m_imageCache.cend())
        return *it;
    // Unreadable names are cached too, so a missing file is not looked for on every paint.
    const QImage rendered = loadImage(name, size, keepAspect);
    m_imageCache.insert(key, rendered);
    return rendered;
}

QImage Button::pressedImage(const QString &name, const QSize &size)
{
    const QString key = QStringLiteral("%1|%2x%3down").arg(name).arg(size.width()).arg(size.height());
    const auto it = m_imageCache.constFind(key);
    if (it != m_imageCache.cend())
        return *it;
    QImage down = image(name, size);
    if (!down.isNull()) {
        QPainter p(&down);
        p.setCompositionMode(QPainter::CompositionMode_SourceAtop);
        p.fillRect(down.rect(), QColor(0, 0, 0, 80));
    }
    m_imageCache.insert(key, down);
    return down;
}

QImage Button::loadImage(const QString &name, const QSize &size, bool keepAspect) const
{
    const QString path = imagePath(name);
    if (isSvg(path)) {
        QSvgRenderer renderer(path);
        if (!renderer.isValid())
            return QImage();
        QSizeF target(size);
        if (keepAspect && !renderer.defaultSize().isEmpty())
            target = QSizeF(renderer.defaultSize()).scaled(target, Qt::KeepAspectRatio);
        QImage out(size, QImage::Format_ARGB32_Premultiplied);
        out.fill(Qt::transparent);
        QPainter p(&out);
        renderer.render(&p, QRectF(QPointF((size.width() - target.width()) / 2, (size.height() - target.height()) / 2),
                                   target));
        return out;
    }
    const QImage source(path);
    if (source.isNull())
        return QImage();
    if (!keepAspect)
        return source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return centredIn(source.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation), size);
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
        fill = QColor(0, 0, 0, 90);
    else if (down)
        fill = fill.darker(140);
    if (!isEnabled())
        fill.setAlpha(fill.alpha() / 2);
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
    const QImage face = faceImage.isEmpty() ? QImage() : down ? pressedImage(faceImage, size()) : image(faceImage, size());
    if (face.isNull())
        paintFace(painter, lit, down);
    else
        painter.drawImage(0, 0, face);
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
        const QImage iconImage = image(m_icon, iconRect.size(), true);
        if (!iconImage.isNull())
            painter.drawImage(iconRect.topLeft(), iconImage);
    }
    if (label.isEmpty())
        return;
    QColor color = m_textColor;
    if (!isEnabled())
        color.setAlpha(color.alpha() / 2);
    painter.setPen(color);
    painter.setFont(font());
    const QString elided = painter.fontMetrics().elidedText(label, Qt::ElideRight, content.width());
    painter.drawText(content, Qt::AlignCenter, elided);
}

void Button::resizeEvent(QResizeEvent *event)
{
    // Renderings are per size; the old ones will not be asked for again.
    m_imageCache.clear();
    BaseWidget::resizeEvent(event);
}
