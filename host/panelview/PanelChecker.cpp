#include "PanelChecker.h"

#include <QDomDocument>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

struct PanelChecker::Context
{
    QList<Finding> findings;
    QSet<QString> devices;
    QHash<QString, QStringList> tags;
    QHash<QString, TypeKnowledge> knowledge;

    void error(const QDomNode &node, const QString &message) { findings.append({node.lineNumber(), true, message}); }
    void warning(const QDomNode &node, const QString &message) { findings.append({node.lineNumber(), false, message}); }
};

namespace {

const char *const geometryAttributes[] = {"x", "y", "width", "height"};

bool isWholeNumber(const QString &text, int *value)
{
    bool ok = false;
    *value = text.trimmed().toInt(&ok);
    return ok;
}

bool isColour(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*(?:,\\s*(\\d{1,3})\\s*)?$"));
    const QRegularExpressionMatch m = form.match(text);
    bool ok = m.hasMatch();
    for (int i = 1; ok && i <= 4; ++i)
        ok = m.captured(i).isEmpty() || m.captured(i).toInt() <= 255;
    return ok;
}

bool isColourTag(const QString &tag)
{
    return tag.endsWith(QLatin1String("Color")) || tag.endsWith(QLatin1String("Colour"));
}

// The keys of an "Address" element: its attributes and its child elements.
QMap<QString, QString> addressKeys(const QDomElement &address)
{
    QMap<QString, QString> keys;
    const QDomNamedNodeMap attributes = address.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        keys.insert(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    for (QDomElement c = address.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        keys.insert(c.tagName(), c.text());
    return keys;
}

} // namespace

PanelChecker::PanelChecker(TypeLookup types, ModelLookup models)
    : m_types(std::move(types)), m_models(std::move(models))
{
}

QList<PanelChecker::Finding> PanelChecker::check(const QByteArray &xml) const
{
    Context context;
    QDomDocument document;
    QString message;
    int line = 0, column = 0;
    if (!document.setContent(xml, &message, &line, &column)) {
        context.findings.append({line, true, QStringLiteral("not well-formed XML: %1 (column %2)").arg(message).arg(column)});
        return context.findings;
    }
    const QDomElement root = document.documentElement();
    if (root.tagName() != QLatin1String("Panel")) {
        context.error(root, QStringLiteral("the root element must be <Panel>, not <%1>").arg(root.tagName()));
        return context.findings;
    }
    for (const char *name : {"width", "height"}) {
        int v;
        const QString text = root.attribute(QLatin1String(name));
        if (!root.hasAttribute(QLatin1String(name)))
            context.error(root, QStringLiteral("<Panel> needs a %1").arg(QLatin1String(name)));
        else if (!isWholeNumber(text, &v) || v <= 0)
            context.error(root, QStringLiteral("malformed geometry: Panel %1 \"%2\" is not a whole number above 0")
                                    .arg(QLatin1String(name), text));
    }

    if (root.hasAttribute(QStringLiteral("background")) && !isColour(root.attribute(QStringLiteral("background"))))
        context.error(root, QStringLiteral("malformed colour \"%1\" in the Panel's background (expected R,G,B or R,G,B,A from 0 to 255)")
                                .arg(root.attribute(QStringLiteral("background"))));

    for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        if (e.tagName() != QLatin1String("Device"))
            continue;
        const QString id = e.attribute(QStringLiteral("id"));
        const QString model = e.attribute(QStringLiteral("model"));
        if (id.isEmpty())
            context.error(e, QStringLiteral("<Device> needs an id"));
        else if (context.devices.contains(id))
            context.error(e, QStringLiteral("device \"%1\" is declared twice").arg(id));
        if (model.isEmpty())
            context.error(e, QStringLiteral("<Device> needs a model"));
        else if (m_models && !m_models(model))
            context.warning(e, QStringLiteral("device model \"%1\" is unknown: its parameters will not answer").arg(model));
        if (!id.isEmpty())
            context.devices.insert(id);
    }

    QHash<QString, int> names;
    int widgets = 0;
    for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        if (e.tagName() == QLatin1String("Device"))
            continue;
        if (e.tagName() != QLatin1String("Widget")) {
            context.warning(e, QStringLiteral("<%1> is not part of a panel and is ignored").arg(e.tagName()));
            continue;
        }
        ++widgets;
        const QString name = e.attribute(QStringLiteral("name"));
        if (!name.isEmpty()) {
            if (names.contains(name))
                context.warning(e, QStringLiteral("the name \"%1\" is already used on line %2").arg(name).arg(names.value(name)));
            else
                names.insert(name, e.lineNumber());
        }
        checkWidget(e, context);
    }
    if (widgets == 0)
        context.warning(root, QStringLiteral("the panel holds no widgets"));

    std::stable_sort(context.findings.begin(), context.findings.end(),
                     [](const Finding &a, const Finding &b) { return a.line < b.line; });
    return context.findings;
}

void PanelChecker::checkWidget(const QDomElement &widget, Context &context) const
{
    const QString type = widget.attribute(QStringLiteral("type"));
    if (widget.attribute(QStringLiteral("name")).isEmpty())
        context.warning(widget, QStringLiteral("widget without a name: scripts cannot reach it"));

    TypeKnowledge knowledge = UnknownType;
    if (type.isEmpty()) {
        context.error(widget, QStringLiteral("<Widget> needs a type"));
    } else {
        if (!context.knowledge.contains(type)) {
            QStringList tags;
            context.knowledge.insert(type, m_types(type, &tags));
            context.tags.insert(type, tags);
        }
        knowledge = context.knowledge.value(type);
        if (knowledge == UnknownType)
            context.error(widget, QStringLiteral("unknown widget type \"%1\"").arg(type));
    }

    for (QDomElement child = widget.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Widget")) {
            checkWidget(child, context);
            continue;
        }
        if (knowledge == KnownTypeWithTags && !context.tags.value(type).contains(child.tagName()))
            context.warning(child, QStringLiteral("<%1> is not read by %2 and is ignored").arg(child.tagName(), type));
        checkForms(child, context);
    }
}

void PanelChecker::checkForms(const QDomElement &element, Context &context) const
{
    const QString tag = element.tagName();
    if (tag == QLatin1String("Widget")) {
        checkWidget(element, context);
        return;
    }
    if (tag == QLatin1String("Address")) {
        checkAddress(element, context);
        return;
    }
    if (tag == QLatin1String("AddressList")) {
        for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
            if (c.tagName() == QLatin1String("Address"))
                checkAddress(c, context);
            else
                context.warning(c, QStringLiteral("<AddressList> holds <Address> elements, not <%1>").arg(c.tagName()));
        }
        return;
    }

    for (const char *name : geometryAttributes) {
        const QString attribute = QLatin1String(name);
        int v;
        if (!element.hasAttribute(attribute)) {
            if (tag == QLatin1String("Rect"))
                context.error(element, QStringLiteral("malformed geometry: <Rect> needs %1").arg(attribute));
            continue;
        }
        const QString text = element.attribute(attribute);
        if (!isWholeNumber(text, &v))
            context.error(element, QStringLiteral("malformed geometry: %1 \"%2\" of <%3> is not a whole number")
                                       .arg(attribute, text, tag));
        else if (v < 0 && (attribute == QLatin1String("width") || attribute == QLatin1String("height")))
            context.error(element, QStringLiteral("malformed geometry: %1 of <%2> is negative").arg(attribute, tag));
    }

    if (isColourTag(tag) && element.firstChildElement().isNull() && !isColour(element.text()))
        context.error(element, QStringLiteral("malformed colour \"%1\" in <%2> (expected R,G,B or R,G,B,A from 0 to 255)")
                                   .arg(element.text().trimmed(), tag));

    for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        checkForms(c, context);
}

void PanelChecker::checkAddress(const QDomElement &address, Context &context) const
{
    const QMap<QString, QString> keys = addressKeys(address);
    if (keys.value(QStringLiteral("prmAddr")).isEmpty())
        context.error(address, QStringLiteral("<Address> names no parameter (prmAddr)"));
    const QString device = keys.value(QStringLiteral("dev_uniq_id"));
    if (device.isEmpty()) {
        if (context.devices.isEmpty())
            context.error(address, QStringLiteral("<Address> names no device and the panel declares none"));
    } else if (!context.devices.contains(device)) {
        context.warning(address, QStringLiteral("<Address> names device \"%1\", which the panel does not declare").arg(device));
    }
}

bool PanelChecker::hasError(const QList<Finding> &findings)
{
    return std::any_of(findings.cbegin(), findings.cend(), [](const Finding &f) { return f.error; });
}

QStringList PanelChecker::format(const QString &file, const QList<Finding> &findings)
{
    QStringList lines;
    for (const Finding &f : findings)
        lines << QStringLiteral("%1:%2: %3: %4").arg(file).arg(f.line).arg(f.error ? QLatin1String("error") : QLatin1String("warning"), f.message);
    return lines;
}
