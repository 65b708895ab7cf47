// What a control reads from its element of the panel description, and the
// geometry, font and painting those settings drive.

#include "BaseWidget.h"

#include "FocusRing.h"
#include "GridLayout.h"
#include "PanelTiles.h"
#include "Saturating.h"

#include <QApplication>
#include <QDomElement>
#include <QPainter>

// ---------------------------------------------------------------------------
// Tags

const TagTable &BaseWidget::tags()
{
    static const TagTable table = TagTable::of<BaseWidget>(nullptr, {
        {"Rect", &BaseWidget::readRect},
        {"Focus", &BaseWidget::readFocus},
        {"Layout", &BaseWidget::readLayout},
        {"Font", &BaseWidget::readFont},
        {"FontSize", &BaseWidget::readFontSize},
        {"Address", &BaseWidget::readAddress},
        {"AddressList", &BaseWidget::readAddressList},
        {"DragEnabled", &BaseWidget::readDragEnabled},
        {"BaseAddress", &BaseWidget::readBaseAddress},
        {"ReplaceParameterName", &BaseWidget::readReplaceParameterName},
        {"VisibleParameterName", &BaseWidget::readVisibleParameterName},
        {"ContextMenuVisible", &BaseWidget::readContextMenuVisible},
        {"FindKey", &BaseWidget::readFindKey},
        {"RemoteControlList", &BaseWidget::readRemoteControlList},
        {"TabOrder", &BaseWidget::readTabOrder},
        {"FrontFocus", &BaseWidget::readFrontFocus},
    });
    return table;
}

// ---------------------------------------------------------------------------
// Geometry, font, painting

QPoint BaseWidget::scaledPosition(const QPoint &design, float zoom) const
{
    return QPoint(Saturating::pixels(design.x(), zoom), Saturating::pixels(design.y(), zoom));
}

QSize BaseWidget::scaledSize(const QSize &design, float zoom) const
{
    return QSize(Saturating::pixels(design.width(), zoom), Saturating::pixels(design.height(), zoom));
}

qreal BaseWidget::scaledPointSize(qreal designPointSize, float zoom) const
{
    const int dpi = logicalDpiX();
    return designPointSize * zoom * 96.0 / (dpi > 0 ? dpi : 96);
}

void BaseWidget::applyFont(float zoom)
{
    QFont f = font();
    const qreal size = scaledPointSize(m_designPointSize, zoom);
    if (size > 0 && !qFuzzyCompare(f.pointSizeF(), size)) {
        f.setPointSizeF(size);
        setFont(f);
    }
}

void BaseWidget::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    if (event->added() && event->child()->isWidgetType()) {
        if (auto *grid = qobject_cast<GridLayout *>(layout()))
            grid->place(static_cast<QWidget *>(event->child()));
    }
}

void BaseWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintBase(painter);
}

void BaseWidget::paintBase(QPainter &painter)
{
    FocusRing::paint(painter, this);
    if (!m_highlight)
        return;
    painter.save();
    painter.setPen(QPen(QColor(255, 170, 0), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.restore();
}

// ---------------------------------------------------------------------------
// Description handlers

QRect BaseWidget::parseRect(const QDomElement &e)
{
    // Clamped to what a widget can be, so that right and bottom edges stay
    // inside the int range however large the numbers in the file are.
    const auto read = [&e](const char *name, int low) {
        return int(qBound<qint64>(low, e.attribute(QLatin1String(name)).toLongLong(), Saturating::maxPixels));
    };
    return QRect(read("x", -Saturating::maxPixels), read("y", -Saturating::maxPixels), read("width", 0),
                 read("height", 0));
}

QColor BaseWidget::parseColor(const QString &text, const QColor &fallback)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3 && parts.size() != 4)
        return fallback;
    int c[4] = {0, 0, 0, 255};
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        c[i] = parts.at(i).trimmed().toInt(&ok);
        if (!ok || c[i] < 0 || c[i] > 255)
            return fallback;
    }
    return QColor(c[0], c[1], c[2], c[3]);
}

bool BaseWidget::readRect(const QDomElement &e)
{
    // All four numbers or nothing: <Rect/> leaves the geometry as it is.
    // Each is read once and clamped as parseRect() clamps it.
    static const struct
    {
        QString name;
        int low;
    } fields[] = {{QStringLiteral("x"), -Saturating::maxPixels}, {QStringLiteral("y"), -Saturating::maxPixels},
                  {QStringLiteral("width"), 0}, {QStringLiteral("height"), 0}};
    int v[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        v[i] = qBound(fields[i].low, Saturating::parseInt(e.attribute(fields[i].name), &ok), Saturating::maxPixels);
        if (!ok)
            return false;
    }
    const QRect r(v[0], v[1], v[2], v[3]);
    m_designPosition = r.topLeft();
    m_designSize = r.size();
    const float zoom = zoomFactor();
    const QPoint pos = scaledPosition(m_designPosition, zoom);
    const QSize size = scaledSize(m_designSize, zoom);
    PanelTiles::place(this, QRect(pos, size));
    if (e.hasAttribute(QStringLiteral("fixed"))) {
        const QString fixed = e.attribute(QStringLiteral("fixed"));
        if (fixed.contains(QLatin1String("height")))
            setFixedHeight(size.height());
        if (fixed.contains(QLatin1String("width")))
            setFixedWidth(size.width());
    }
    if (e.hasAttribute(QStringLiteral("expand"))) {
        const QString expand = e.attribute(QStringLiteral("expand"));
        QSizePolicy policy = sizePolicy();
        if (expand.contains(QLatin1String("height")))
            policy.setVerticalPolicy(QSizePolicy::Expanding);
        if (expand.contains(QLatin1String("width")))
            policy.setHorizontalPolicy(QSizePolicy::Expanding);
        setSizePolicy(policy);
    }
    return true;
}

bool BaseWidget::readFocus(const QDomElement &e)
{
    const QString text = e.text();
    if (text == QLatin1String("none"))
        setFocusPolicy(Qt::NoFocus);
    else if (text == QLatin1String("strong"))
        setFocusPolicy(Qt::StrongFocus);
    else if (text == QLatin1String("tab"))
        setFocusPolicy(Qt::TabFocus);
    else
        return false;
    return true;
}

bool BaseWidget::readLayout(const QDomElement &e)
{
    if (e.attribute(QStringLiteral("type")) != QLatin1String("grid"))
        return false;
    delete layout();
    auto *grid = new GridLayout(e, zoomFactor());
    setLayout(grid);
    for (QObject *child : children()) {
        if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
            grid->place(static_cast<QWidget *>(child));
    }
    return true;
}

bool BaseWidget::readFont(const QDomElement &e)
{
    QFont f = font();
    const QString family = e.attribute(QStringLiteral("family"), e.text().trimmed());
    if (!family.isEmpty())
        f.setFamily(family);
    if (e.hasAttribute(QStringLiteral("bold")))
        f.setBold(e.attribute(QStringLiteral("bold")) == QLatin1String("true"));
    if (e.hasAttribute(QStringLiteral("italic")))
        f.setItalic(e.attribute(QStringLiteral("italic")) == QLatin1String("true"));
    f.setPointSizeF(scaledPointSize(m_designPointSize, zoomFactor()));
    setFont(f);
    return true;
}

bool BaseWidget::readFontSize(const QDomElement &e)
{
    bool ok = false;
    const double size = e.text().trimmed().toDouble(&ok);
    if (!ok || size <= 0)
        return false;
    m_designPointSize = size;
    QFont f = font();
    f.setPointSizeF(scaledPointSize(size, zoomFactor()));
    setFont(f);
    return true;
}

bool BaseWidget::readAddress(const QDomElement &e)
{
    return appendAddress(e);
}

bool BaseWidget::readAddressList(const QDomElement &e)
{
    bool all = true;
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        all &= appendAddress(c);
    return all;
}

bool BaseWidget::readDragEnabled(const QDomElement &e)
{
    m_dragEnabled = isTrue(e);
    return true;
}

bool BaseWidget::readBaseAddress(const QDomElement &e)
{
    m_baseAddress = parseAddressKeys(e);
    return true;
}

bool BaseWidget::readReplaceParameterName(const QDomElement &e)
{
    m_replaceParameterName = e.text();
    return true;
}

bool BaseWidget::readVisibleParameterName(const QDomElement &e)
{
    m_visibleParameterName = isTrue(e);
    return true;
}

bool BaseWidget::readContextMenuVisible(const QDomElement &e)
{
    m_contextMenuVisible = isTrue(e);
    return true;
}

bool BaseWidget::readFindKey(const QDomElement &e)
{
    m_findKey = e.text();
    return true;
}

bool BaseWidget::readRemoteControlList(const QDomElement &e)
{
    m_remoteControlList.clear();
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        const QString text = c.text().trimmed();
        if (!text.isEmpty())
            m_remoteControlList.append(text);
    }
    if (m_remoteControlList.isEmpty()) {
        for (const QString &part : e.text().split(QLatin1Char(','), Qt::SkipEmptyParts))
            m_remoteControlList.append(part.trimmed());
    }
    return true;
}

bool BaseWidget::readTabOrder(const QDomElement &e)
{
    bool ok = false;
    const int order = e.text().trimmed().toInt(&ok);
    if (!ok)
        return false;
    m_tabOrder = order;
    return true;
}

bool BaseWidget::readFrontFocus(const QDomElement &e)
{
    if (!isTrue(e))
        return false;
    setFocus(Qt::OtherFocusReason);
    return true;
}
