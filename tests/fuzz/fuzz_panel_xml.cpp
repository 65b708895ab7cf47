// Panel XML: every <Widget> element is built by the widget factory,
// configured, zoomed and painted, as the panel factory would.
#include "FuzzSupport.h"

#include "plugin/WidgetFactory.h"

#include <corvane/IWidgetCore.h>

#include <QDomDocument>
#include <QImage>
#include <QPainter>
#include <QWidget>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Fuzz::ensureApplication();
    static WidgetFactory factory;
    static const QStringList types = WidgetFactory::typeNames();

    QDomDocument doc;
    if (!doc.setContent(Fuzz::bytes(data, size)))
        return 0;
    Fuzz::Host host;
    ParameterManagementRegistry registry;
    QWidget page;
    page.resize(200, 150);
    int built = 0;
    for (QDomElement e = doc.documentElement().firstChildElement(QStringLiteral("Widget")); !e.isNull() && built < 4;
         e = e.nextSiblingElement(QStringLiteral("Widget"))) {
        QString type = e.attribute(QStringLiteral("type"));
        // An index picks a type, so that short inputs reach all of them.
        bool isIndex = false;
        const uint index = type.toUInt(&isIndex);
        if (isIndex)
            type = types.at(int(index % uint(types.size())));
        IWidgetCore *core = factory.create(type, &page, &host, &registry);
        if (!core)
            continue;
        ++built;
        const float zoom = e.attribute(QStringLiteral("zoom"), QStringLiteral("1")).toFloat();
        core->configure(e);
        core->setZoom(zoom);
        registry.commitAll();
    }
    QImage image(200, 150, QImage::Format_ARGB32_Premultiplied);
    page.render(&image);
    return 0;
}
