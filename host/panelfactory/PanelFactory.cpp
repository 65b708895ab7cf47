#include "PanelFactory.h"
#include "HostData.h"
#include "PanelTile.h"

#include <core/Saturating.h>
#include <corvane/IHostCore.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QPluginLoader>
#include <QVector>
#include <QWidget>

namespace {

// Keys the page inherits go into every address that does not set them,
// as an attribute of the "Address" element.
void inheritContext(QDomElement element, const QVariantMap &context)
{
    if (context.isEmpty())
        return;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Widget"))
            continue; // a nested page gets its context from the control that builds it
        if (child.tagName() == QLatin1String("Address")) {
            for (auto it = context.cbegin(); it != context.cend(); ++it) {
                if (!child.hasAttribute(it.key()) && child.firstChildElement(it.key()).isNull())
                    child.setAttribute(it.key(), it.value().toString());
            }
            continue;
        }
        inheritContext(child, context);
    }
}

int dimension(const QDomElement &e, const char *name)
{
    bool ok = false;
    const int v = e.attribute(QLatin1String(name)).toInt(&ok);
    return ok && v > 0 ? qMin(v, QWIDGETSIZE_MAX) : 0;
}

} // namespace

PanelFactory::PanelFactory(QObject *parent)
    : QObject(parent)
{
}

void PanelFactory::setWidgetFactory(QObject *factory)
{
    m_factoryObject = factory;
}

QObject *PanelFactory::widgetFactory()
{
    factory();
    return m_factoryObject;
}

IWidgetFactory *PanelFactory::factory()
{
    if (!m_factoryObject) {
        QPluginLoader loader(QDir::cleanPath(QCoreApplication::applicationDirPath()
                                             + QLatin1String("/libCorvaneWidgets.so")));
        m_factoryObject = loader.instance();
        if (!m_factoryObject)
            m_problems.append(loader.errorString());
    }
    return qobject_cast<IWidgetFactory *>(m_factoryObject);
}

QColor PanelFactory::panelBackground(const QDomElement &panel)
{
    static const QColor standard(38, 38, 38);
    const QStringList parts = panel.attribute(QStringLiteral("background")).split(QLatin1Char(','));
    if (parts.size() != 3 && parts.size() != 4)
        return standard;
    int c[4] = {0, 0, 0, 255};
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        c[i] = parts.at(i).trimmed().toInt(&ok);
        if (!ok || c[i] < 0 || c[i] > 255)
            return standard;
    }
    return QColor(c[0], c[1], c[2], c[3]);
}

QWidget *PanelFactory::createPanel(const QDomElement &panel, QWidget *parent, IHostCore *hostCore,
                                   ParameterManagementRegistry *registry, const QVariantMap &context)
{
    m_problems.clear();
    IWidgetFactory *widgets = factory();
    if (!widgets || panel.isNull())
        return nullptr;

    const float zoom = hostCore ? hostCore->zoomFactor() : 1.0f;
    auto *page = new QWidget(parent);
    page->setObjectName(panel.attribute(QStringLiteral("name")));
    const int width = dimension(panel, "width");
    const int height = dimension(panel, "height");
    page->setProperty("designSize", QSize(width, height));
    // Controls draw light text for a dark panel; a page paints its own
    // background so that it looks the same wherever it is placed.
    QPalette palette = page->palette();
    palette.setColor(QPalette::Window, panelBackground(panel));
    page->setPalette(palette);
    page->setAutoFillBackground(true);
    // Controls draw in the application's family at 9 points scaled with the
    // zoom; a page in that font lets them inherit it instead of each one
    // keeping a font of its own.
    const int dpi = page->logicalDpiX();
    const qreal pointSize = 9.0 * zoom * 96.0 / (dpi > 0 ? dpi : 96);
    if (pointSize > 0 && qIsFinite(pointSize)) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(pointSize);
        page->setFont(font);
    }
    if (width > 0 && height > 0)
        page->resize(Saturating::pixels(width, zoom), Saturating::pixels(height, zoom));

    int controls = 0;
    for (QDomElement e = panel.firstChildElement(QStringLiteral("Widget")); !e.isNull() && controls <= tiledAbove;
         e = e.nextSiblingElement(QStringLiteral("Widget")))
        ++controls;
    const bool tiled = controls > tiledAbove;
    QVector<PanelTile *> tiles;
    int inTile = 0;
    QRect tileArea;

    int count = 0;
    for (QDomElement e = panel.firstChildElement(QStringLiteral("Widget")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("Widget"))) {
        if (++count > maxControlsPerPage) {
            const QString problem = QStringLiteral("line %1: more than %2 controls on one page; the rest are left out")
                                        .arg(e.lineNumber()).arg(maxControlsPerPage);
            m_problems.append(problem);
            qWarning().noquote() << problem;
            break;
        }
        const QString type = e.attribute(QStringLiteral("type"));
        const QString name = e.attribute(QStringLiteral("name"));
        if (tiled && tiles.isEmpty())
            tiles.append(new PanelTile(page));
        IWidgetCore *core = widgets->create(type, tiled ? tiles.last() : page, hostCore, registry);
        QWidget *w = core ? widgetOf(core) : nullptr;
        if (!w) {
            m_problems.append(QStringLiteral("line %1: no widget type \"%2\"").arg(e.lineNumber()).arg(type));
            continue;
        }
        // Name it first: controls may report requests while they configure.
        w->setObjectName(name);
        core->setWidgetName(name);
        QDomElement element = e;
        if (!context.isEmpty()) {
            element = e.cloneNode(true).toElement();
            inheritContext(element, context);
        }
        core->configure(element);
        core->setZoom(zoom);
        if (tiled && w->parentWidget() == tiles.last()) {
            // A full tile closes where its run of controls leaves its area:
            // on a page laid out in rows or columns its tiles then meet
            // without overlapping, and none needs a mask.
            const QRect place = w->geometry();
            if (closesTile(inTile, tileArea, place)) {
                tiles.append(new PanelTile(page));
                w->setParent(tiles.last());
                inTile = 0;
                tileArea = QRect();
            }
            ++inTile;
            tileArea |= place;
        }
        if (!(w->testAttribute(Qt::WA_WState_ExplicitShowHide) && w->isHidden()))
            w->setVisible(true);
    }
    for (PanelTile *tile : qAsConst(tiles))
        tile->fit();
    return page;
}

QWidget *PanelFactory::createPanelByName(const QString &name, QWidget *parent, IHostCore *hostCore,
                                         ParameterManagementRegistry *registry, const QVariantMap &context)
{
    const QString file = name.endsWith(QLatin1String(".xml")) ? name : name + QLatin1String(".xml");
    QStringList folders;
    if (hostCore && !hostCore->imageBasePath().isEmpty())
        folders << hostCore->imageBasePath();
    folders << hostDataFolder(QStringLiteral("panels"));
    for (const QString &folder : qAsConst(folders)) {
        QFile f(QDir(folder).filePath(file));
        if (!f.open(QIODevice::ReadOnly))
            continue;
        QDomDocument document;
        QString message;
        int line = 0;
        if (!document.setContent(&f, &message, &line)) {
            m_problems = QStringList{QStringLiteral("%1:%2: %3").arg(f.fileName()).arg(line).arg(message)};
            return nullptr;
        }
        return createPanel(document.documentElement(), parent, hostCore, registry, context);
    }
    m_problems = QStringList{QStringLiteral("no panel named \"%1\"").arg(name)};
    return nullptr;
}
