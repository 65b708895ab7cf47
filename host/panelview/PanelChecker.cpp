#include "PanelChecker.h"

#include "JsonWriter.h"
#include "TagForms.h"

#include <QDomDocument>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QVector>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
// Suggestions cost an edit distance per candidate; a hostile file with
// thousands of distinct misspellings gets them only for the first ones.
const int maximumSuggestions = 200;
}

struct PanelChecker::Context
{
    QList<Finding> findings;
    QMap<QString, QString> devices; // id to model
    QString owner;                  // the first device's id
    QHash<QString, QStringList> tags;
    QHash<QString, TypeKnowledge> knowledge;
    QHash<QString, QStringList> parameters; // per model
    QHash<QString, QString> suggestions;    // "model\naddress" to the "did you mean" text
    QHash<QString, int> names;              // widget name to its line
    int suggestionsMade = 0;

    void error(const QDomNode &node, const QString &message) { findings.append({node.lineNumber(), true, message}); }
    //! The nearest \a candidates to \a text, while the file has not asked for too many.
    QStringList suggest(const QString &text, const QStringList &candidates, int count = 3)
    {
        return suggestionsMade++ < maximumSuggestions ? PanelChecker::nearest(text, candidates, count) : QStringList();
    }
    void warning(const QDomNode &node, const QString &message) { findings.append({node.lineNumber(), false, message}); }
};

namespace {

const char *const geometryAttributes[] = {"x", "y", "width", "height"};
const int maximumDepth = 256;

bool isWholeNumber(const QString &text, int *value)
{
    bool ok = false;
    *value = text.trimmed().toInt(&ok);
    return ok;
}

// False only for whole numbers beyond 16 bits; anything else is judged elsewhere.
bool fits16(const QString &text)
{
    static const QRegularExpression whole(QStringLiteral("^\\s*[-+]?\\d+\\s*$"));
    if (!whole.match(text).hasMatch())
        return true;
    bool ok = false;
    const qlonglong v = text.trimmed().toLongLong(&ok);
    return ok && v >= -32768 && v <= 32767;
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

// The keys of an address element: its attributes and its child elements,
// or its text alone as the parameter (<Address>Ch1/Fader</Address>).
QMap<QString, QString> addressKeys(const QDomElement &address)
{
    QMap<QString, QString> keys;
    const QDomNamedNodeMap attributes = address.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        keys.insert(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    bool children = false;
    for (QDomElement c = address.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        keys.insert(c.tagName(), c.text());
        children = true;
    }
    if (!children && !keys.contains(QStringLiteral("prmAddr")) && !address.text().trimmed().isEmpty())
        keys.insert(QStringLiteral("prmAddr"), address.text().trimmed());
    return keys;
}

// Registry categories that are not device parameters.
bool isLocalAddress(const QString &prmAddr)
{
    for (const char *prefix : {"Graph:", "Local:", "Preference:", "Editor:"}) {
        if (prmAddr.startsWith(QLatin1String(prefix)))
            return true;
    }
    return false;
}

QString quotedList(const QStringList &texts, const QString &open, const QString &close)
{
    QStringList quoted;
    for (const QString &t : texts)
        quoted << open + t + close;
    if (quoted.size() < 2)
        return quoted.join(QString());
    const QString last = quoted.takeLast();
    return quoted.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

QString didYouMean(const QStringList &nearest, const QString &open, const QString &close)
{
    return nearest.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(quotedList(nearest, open, close));
}

// Optimal string alignment distance: a swap of two neighbours costs one.
int editDistance(const QString &a, const QString &b)
{
    const int n = a.size(), m = b.size();
    QVector<QVector<int>> d(n + 1, QVector<int>(m + 1));
    for (int i = 0; i <= n; ++i)
        d[i][0] = i;
    for (int j = 0; j <= m; ++j)
        d[0][j] = j;
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= m; ++j) {
            const int cost = a.at(i - 1) == b.at(j - 1) ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[n][m];
}

} // namespace

PanelChecker::PanelChecker(TypeLookup types, ModelLookup models)
    : m_types(std::move(types)), m_models(std::move(models))
{
}

QStringList PanelChecker::nearest(const QString &text, const QStringList &candidates, int count)
{
    if (text.isEmpty() || text.size() > 200)
        return {};
    const QString lower = text.toLower();
    const int limit = std::max(2, int(text.size()) / 3);
    QList<QPair<int, int>> scored; // distance, candidate index
    for (int i = 0; i < candidates.size(); ++i) {
        const QString &c = candidates.at(i);
        if (c == text || std::abs(int(c.size()) - int(text.size())) > limit)
            continue;
        const int d = editDistance(lower, c.toLower());
        if (d <= limit)
            scored.append({d, i});
    }
    std::stable_sort(scored.begin(), scored.end(),
                     [](const QPair<int, int> &a, const QPair<int, int> &b) { return a.first < b.first; });
    QStringList out;
    for (int i = 0; i < scored.size() && out.size() < count; ++i) {
        if (scored.at(i).first > scored.first().first)
            break; // only the nearest ones
        out << candidates.at(scored.at(i).second);
    }
    return out;
}

// The DOM parser reports a tag left open where it noticed, often many lines
// on; the stream reader's element stack knows where it was opened.
bool PanelChecker::checkWellFormed(const QByteArray &xml, Context &context) const
{
    QXmlStreamReader reader(xml);
    struct Open { QString name; int line; };
    QVector<Open> open;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            open.append({reader.name().toString(), int(reader.lineNumber())});
            if (open.size() > maximumDepth) {
                context.findings.append({open.last().line, true,
                                         QStringLiteral("elements nested deeper than %1 levels").arg(maximumDepth)});
                return false;
            }
        } else if (reader.isEndElement() && !open.isEmpty()) {
            open.removeLast();
        }
    }
    if (!reader.hasError())
        return true;

    const int line = int(reader.lineNumber());
    if (reader.error() == QXmlStreamReader::PrematureEndOfDocumentError && !open.isEmpty()) {
        context.findings.append({open.last().line, true,
                                 QStringLiteral("<%1> is not closed (the file ends on line %2)").arg(open.last().name).arg(line)});
        return false;
    }
    // A mismatched end tag: the element it closes is further down the
    // stack, and the ones above it were left open.
    static const QRegularExpression endTag(QStringLiteral("</\\s*([^\\s>]+)\\s*>\\s*$"));
    const QString before = QString::fromUtf8(xml.left(int(reader.characterOffset())));
    const QRegularExpressionMatch m = endTag.match(before);
    if (m.hasMatch() && !open.isEmpty()) {
        const QString closing = m.captured(1);
        int match = -1;
        for (int i = open.size() - 1; i >= 0 && match < 0; --i) {
            if (open.at(i).name == closing)
                match = i;
        }
        if (match >= 0 && match + 1 < open.size()) {
            const Open &unclosed = open.at(match + 1);
            context.findings.append({unclosed.line, true,
                                     QStringLiteral("<%1> is not closed (</%2> on line %3 closes the <%2> of line %4)")
                                         .arg(unclosed.name, closing).arg(line).arg(open.at(match).line)});
            return false;
        }
        if (match < 0) {
            context.findings.append({line, true, QStringLiteral("</%1> closes no open element (the open one is <%2> of line %3)")
                                                     .arg(closing, open.last().name).arg(open.last().line)});
            return false;
        }
    }
    context.findings.append({line, true, QStringLiteral("not well-formed XML: %1 (column %2)")
                                             .arg(reader.errorString()).arg(reader.columnNumber())});
    return false;
}

QList<PanelChecker::Finding> PanelChecker::check(const QByteArray &xml) const
{
    Context context;
    if (!checkWellFormed(xml, context))
        return context.findings;
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
    int size[2] = {0, 0};
    for (int i = 0; i < 2; ++i) {
        const QString name = QLatin1String(i == 0 ? "width" : "height");
        const QString text = root.attribute(name);
        if (!root.hasAttribute(name))
            context.error(root, QStringLiteral("<Panel> needs a %1").arg(name));
        else if (!fits16(text))
            context.error(root, QStringLiteral("Panel %1 %2 does not fit in 16 bits (up to 32767)").arg(name, text.trimmed()));
        else if (!isWholeNumber(text, &size[i]) || size[i] <= 0)
            context.error(root, QStringLiteral("malformed geometry: Panel %1 \"%2\" is not a whole number above 0").arg(name, text));
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
        if (!id.isEmpty() && !context.devices.contains(id)) {
            context.devices.insert(id, model);
            if (context.owner.isEmpty())
                context.owner = id;
        }
    }

    QList<QDomElement> widgets;
    for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        if (e.tagName() == QLatin1String("Device"))
            continue;
        if (e.tagName() != QLatin1String("Widget")) {
            context.warning(e, QStringLiteral("<%1> is not part of a panel and is ignored%2").arg(e.tagName(),
                                 didYouMean(context.suggest(e.tagName(), {QStringLiteral("Widget"), QStringLiteral("Device")}, 1),
                                            QStringLiteral("<"), QStringLiteral(">"))));
            continue;
        }
        widgets.append(e);
        checkWidget(e, context);
    }
    if (widgets.isEmpty())
        context.warning(root, QStringLiteral("the panel holds no widgets"));
    else if (size[0] > 0 && size[1] > 0)
        checkPlacement(widgets, size[0], size[1], context);

    std::stable_sort(context.findings.begin(), context.findings.end(),
                     [](const Finding &a, const Finding &b) { return a.line < b.line; });
    return context.findings;
}

void PanelChecker::checkWidget(const QDomElement &widget, Context &context) const
{
    const QString type = widget.attribute(QStringLiteral("type"));
    const QString name = widget.attribute(QStringLiteral("name"));
    if (name.isEmpty()) {
        context.warning(widget, QStringLiteral("widget without a name: scripts cannot reach it"));
    } else if (context.names.contains(name)) {
        context.warning(widget, QStringLiteral("the name \"%1\" is already used on line %2").arg(name).arg(context.names.value(name)));
    } else {
        context.names.insert(name, widget.lineNumber());
    }

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
        if (knowledge == UnknownType) {
            const QStringList near = context.suggest(type, m_typeNames);
            context.error(widget, QStringLiteral("unknown widget type \"%1\"%2").arg(type, didYouMean(near, QStringLiteral("\""), QStringLiteral("\""))));
        }
    }

    const QString what = type.isEmpty() ? QStringLiteral("this widget") : type;
    for (QDomElement child = widget.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Widget")) {
            // Only pages build controls; anywhere else the element is skipped.
            context.error(child, QStringLiteral("<Widget type=\"%1\"> inside %2 is never built: %2 holds no controls (put it beside it on the panel)")
                                     .arg(child.attribute(QStringLiteral("type")), what));
            continue;
        }
        if (knowledge == KnownTypeWithTags && !context.tags.value(type).contains(child.tagName())) {
            context.warning(child, QStringLiteral("<%1> is not read by %2 and is ignored%3")
                                       .arg(child.tagName(), type,
                                            didYouMean(context.suggest(child.tagName(), context.tags.value(type)), QStringLiteral("<"), QStringLiteral(">"))));
        }
        checkElement(child, QString(), context);
    }
}

void PanelChecker::checkChildren(const QDomElement &element, const QStringList &allowed, const QString &owner,
                                 Context &context) const
{
    const QString tag = element.tagName();
    for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        if (c.tagName() == QLatin1String("Widget") && allowed.contains(QLatin1String("Widget"))) {
            checkWidget(c, context);
        } else if (!allowed.contains(c.tagName())) {
            if (tag == QLatin1String("AddressList")) {
                context.warning(c, QStringLiteral("<AddressList> holds <Address> elements, not <%1>").arg(c.tagName()));
            } else if (c.tagName() == QLatin1String("Widget")) {
                context.error(c, QStringLiteral("<Widget type=\"%1\"> inside <%2> is never built: <%2> holds no controls")
                                     .arg(c.attribute(QStringLiteral("type")), tag));
            } else {
                context.warning(c, QStringLiteral("<%1> is not read inside <%2>%3 and is ignored%4")
                                       .arg(c.tagName(), tag, owner.isEmpty() ? QString() : QStringLiteral(" of ") + owner,
                                            didYouMean(context.suggest(c.tagName(), allowed), QStringLiteral("<"), QStringLiteral(">"))));
            }
        } else {
            checkElement(c, tag, context);
        }
    }
}

void PanelChecker::checkElement(const QDomElement &element, const QString &parent, Context &context) const
{
    const QString tag = element.tagName();
    const TagForms::Entry *entry = TagForms::find(tag, parent);
    const TagForms::Form form = entry ? entry->form : TagForms::Text;
    const QString text = element.text().trimmed();
    const bool leaf = element.firstChildElement().isNull();

    switch (form) {
    case TagForms::Address:
        checkAddress(element, tag == QLatin1String("Address"), context);
        return;
    case TagForms::AddressList:
        for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
            if (c.tagName() == QLatin1String("Address"))
                checkAddress(c, true, context);
            else
                context.warning(c, QStringLiteral("<AddressList> holds <Address> elements, not <%1>").arg(c.tagName()));
        }
        return;
    case TagForms::Boolean:
    case TagForms::BooleanAnyCase: {
        const bool exact = form == TagForms::Boolean;
        const bool meantTrue = text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1")
            || text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 || text.compare(QLatin1String("on"), Qt::CaseInsensitive) == 0;
        const bool readTrue = exact ? element.text() == QLatin1String("true") : element.text().toLower() == QLatin1String("true");
        if (meantTrue && !readTrue)
            context.warning(element, QStringLiteral("\"%1\" in <%2> reads as false: only %3 is true")
                                         .arg(element.text(), tag, exact ? QStringLiteral("the exact text \"true\"") : QStringLiteral("\"true\" (in any case)")));
        return;
    }
    case TagForms::Whole:
    case TagForms::Whole16: {
        bool ok = false;
        text.toLongLong(&ok);
        if (!ok && leaf && !text.isEmpty())
            context.warning(element, QStringLiteral("<%1> takes a whole number, not \"%2\"").arg(tag, text));
        else if (ok && form == TagForms::Whole16 && !fits16(text))
            context.error(element, QStringLiteral("%1 in <%2> does not fit in 16 bits (-32768 to 32767)").arg(text, tag));
        break;
    }
    case TagForms::Number:
    case TagForms::NumberList:
        for (const QString &part : form == TagForms::Number ? QStringList{text} : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            bool ok = false;
            part.trimmed().toDouble(&ok);
            if (!ok && leaf && !text.isEmpty()) {
                context.warning(element, QStringLiteral("<%1> takes %2, not \"%3\"").arg(tag, form == TagForms::Number ? QStringLiteral("a number") : QStringLiteral("numbers separated by commas"), text));
                break;
            }
        }
        break;
    case TagForms::Image:
        checkFile(element, ImageFile, text, context);
        break;
    case TagForms::PanelFile:
        checkFile(element, PanelFile, text, context);
        break;
    default:
        break;
    }

    for (const char *name : geometryAttributes) {
        const QString attribute = QLatin1String(name);
        int v;
        if (!element.hasAttribute(attribute)) {
            if (tag == QLatin1String("Rect"))
                context.error(element, QStringLiteral("malformed geometry: <Rect> needs %1").arg(attribute));
            continue;
        }
        const QString value = element.attribute(attribute);
        if (!fits16(value))
            context.error(element, QStringLiteral("%1 %2 of <%3> does not fit in 16 bits (-32768 to 32767)").arg(attribute, value.trimmed(), tag));
        else if (!isWholeNumber(value, &v))
            context.error(element, QStringLiteral("malformed geometry: %1 \"%2\" of <%3> is not a whole number").arg(attribute, value, tag));
        else if (v < 0 && (attribute == QLatin1String("width") || attribute == QLatin1String("height")))
            context.error(element, QStringLiteral("malformed geometry: %1 of <%2> is negative").arg(attribute, tag));
    }
    for (const char *name : {"range", "divide"}) {
        const QString value = element.attribute(QLatin1String(name)).trimmed();
        if (!value.isEmpty() && !fits16(value))
            context.error(element, QStringLiteral("%1 %2 of <%3> does not fit in 16 bits (-32768 to 32767)").arg(QLatin1String(name), value, tag));
    }
    if (element.hasAttribute(QStringLiteral("position"))) {
        bool ok = false;
        const double p = element.attribute(QStringLiteral("position")).toDouble(&ok);
        if (!ok || !(p >= 0 && p <= 1))
            context.error(element, QStringLiteral("position \"%1\" of <%2> is not between 0 and 1").arg(element.attribute(QStringLiteral("position")), tag));
    }
    if (element.hasAttribute(QStringLiteral("file")) && (form == TagForms::Controls)) {
        const QString file = element.attribute(QStringLiteral("file")).trimmed();
        if (!file.contains(QLatin1String("%1")))
            checkFile(element, PanelFile, file, context);
    }
    if ((form == TagForms::Colour || (!entry && isColourTag(tag))) && leaf && !isColour(element.text()))
        context.error(element, QStringLiteral("malformed colour \"%1\" in <%2> (expected R,G,B or R,G,B,A from 0 to 255)")
                                   .arg(text, tag));

    if (entry && (form == TagForms::Children || form == TagForms::Controls)) {
        if (!entry->children.contains(QLatin1String("*")))
            checkChildren(element, entry->children, QString(), context);
        return;
    }
    if (!entry) {
        for (QDomElement c = element.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
            if (c.tagName() == QLatin1String("Widget"))
                context.error(c, QStringLiteral("<Widget type=\"%1\"> inside <%2> is never built: <%2> holds no controls")
                                     .arg(c.attribute(QStringLiteral("type")), tag));
            else
                checkElement(c, tag, context);
        }
    }
}

void PanelChecker::checkAddress(const QDomElement &address, bool needsParameter, Context &context) const
{
    const QString tag = address.tagName();
    // <ChNum>3</ChNum>: a fixed number, not an address.
    if (!needsParameter && !address.hasAttributes() && address.firstChildElement().isNull())
        return;
    const QMap<QString, QString> keys = addressKeys(address);
    const QString prmAddr = keys.value(QStringLiteral("prmAddr")).trimmed();
    if (prmAddr.isEmpty() && needsParameter)
        context.error(address, QStringLiteral("<Address> names no parameter (prmAddr)"));

    if (keys.contains(QStringLiteral("ui_prm_val"))) {
        bool ok = false;
        const double p = keys.value(QStringLiteral("ui_prm_val")).toDouble(&ok);
        if (!ok || !(p >= 0 && p <= 1))
            context.error(address, QStringLiteral("ui_prm_val \"%1\" of <%2> is not a position between 0 and 1").arg(keys.value(QStringLiteral("ui_prm_val")), tag));
    }

    QString device = keys.value(QStringLiteral("dev_uniq_id"));
    if (device.isEmpty()) {
        if (context.devices.isEmpty()) {
            if (tag != QLatin1String("BaseAddress"))
                context.error(address, QStringLiteral("<%1> names no device and the panel declares none").arg(tag));
            return;
        }
        device = context.owner;
    } else if (!context.devices.contains(device)) {
        context.warning(address, QStringLiteral("<%1> names device \"%2\", which the panel does not declare").arg(tag, device));
        return;
    }

    // Templates are bound later; other registry categories are not device parameters.
    if (prmAddr.isEmpty() || prmAddr.contains(QLatin1Char('{')) || isLocalAddress(prmAddr) || !m_parameters
        || tag == QLatin1String("BaseAddress"))
        return;
    const QString model = context.devices.value(device);
    if (model.isEmpty() || (m_models && !m_models(model)))
        return;
    if (!context.parameters.contains(model))
        context.parameters.insert(model, m_parameters(model));
    const QStringList &known = context.parameters[model];
    if (known.contains(prmAddr))
        return;
    const QString key = model + QLatin1Char('\n') + prmAddr;
    if (!context.suggestions.contains(key)) {
        const QStringList near = context.suggest(prmAddr, known);
        context.suggestions.insert(key, didYouMean(near, QStringLiteral("\""), QStringLiteral("\"")));
    }
    context.error(address, QStringLiteral("device \"%1\" (%2) has no parameter \"%3\"%4")
                               .arg(device, model, prmAddr, context.suggestions.value(key)));
}

void PanelChecker::checkFile(const QDomNode &node, FileKind kind, const QString &name, Context &context) const
{
    if (!m_files || name.isEmpty() || m_files(kind, name))
        return;
    context.error(node, kind == ImageFile ? QStringLiteral("image file \"%1\" not found").arg(name)
                                          : QStringLiteral("panel file \"%1\" not found").arg(name));
}

void PanelChecker::checkPlacement(const QList<QDomElement> &widgets, int width, int height, Context &context) const
{
    struct Placed { QString name; int line; int x, y, w, h; };
    QHash<QString, Placed> seen; // by "x,y,w,h"
    for (const QDomElement &widget : widgets) {
        const QDomElement rect = widget.firstChildElement(QStringLiteral("Rect"));
        if (rect.isNull())
            continue;
        int v[4];
        bool ok = true;
        for (int i = 0; i < 4; ++i)
            ok = ok && isWholeNumber(rect.attribute(QLatin1String(geometryAttributes[i])), &v[i]) && fits16(rect.attribute(QLatin1String(geometryAttributes[i])));
        if (!ok || v[2] < 0 || v[3] < 0)
            continue;
        const QString name = widget.attribute(QStringLiteral("name"), widget.attribute(QStringLiteral("type")));
        const qint64 right = qint64(v[0]) + v[2], bottom = qint64(v[1]) + v[3];
        if (v[0] >= width || v[1] >= height || right <= 0 || bottom <= 0)
            context.warning(rect, QStringLiteral("\"%1\" at %2,%3 lies outside the %4x%5 panel and cannot be seen")
                                      .arg(name).arg(v[0]).arg(v[1]).arg(width).arg(height));
        else if (v[0] < 0 || v[1] < 0 || right > width || bottom > height)
            context.warning(rect, QStringLiteral("\"%1\" (%2,%3 %4x%5) reaches past the edge of the %6x%7 panel")
                                      .arg(name).arg(v[0]).arg(v[1]).arg(v[2]).arg(v[3]).arg(width).arg(height));
        QString key = QStringLiteral("%1,%2,%3,%4").arg(v[0]).arg(v[1]).arg(v[2]).arg(v[3]);
        // Layers of different types (a graph over its background) share a place on purpose.
        key += QLatin1Char(' ') + widget.attribute(QStringLiteral("type"));
        if (v[2] > 0 && v[3] > 0 && seen.contains(key))
            context.warning(rect, QStringLiteral("\"%1\" lies exactly on \"%2\" (line %3)").arg(name, seen.value(key).name).arg(seen.value(key).line));
        else
            seen.insert(key, {name, widget.lineNumber(), v[0], v[1], v[2], v[3]});
    }
}

bool PanelChecker::hasError(const QList<Finding> &findings)
{
    return std::any_of(findings.cbegin(), findings.cend(), [](const Finding &f) { return f.error; });
}

QList<PanelChecker::Finding> PanelChecker::collapse(const QList<Finding> &findings)
{
    QList<Finding> out;
    QHash<QString, int> first;
    for (const Finding &f : findings) {
        const QString key = (f.error ? QLatin1Char('E') : QLatin1Char('W')) + f.message;
        const auto it = first.constFind(key);
        if (it == first.cend()) {
            first.insert(key, out.size());
            out.append(f);
        } else {
            out[*it].repeats.append(f.line);
            out[*it].repeats += f.repeats;
        }
    }
    return out;
}

QStringList PanelChecker::format(const QString &file, const QList<Finding> &findings)
{
    QStringList lines;
    for (const Finding &f : findings) {
        QString line = QStringLiteral("%1:%2: %3: %4").arg(file).arg(f.line).arg(f.error ? QLatin1String("error") : QLatin1String("warning"), f.message);
        if (!f.repeats.isEmpty())
            line += QStringLiteral(" (and %1 more like this)").arg(f.repeats.size());
        lines << line;
    }
    return lines;
}

QStringList PanelChecker::formatJson(const QString &file, const QList<Finding> &findings)
{
    QStringList lines;
    for (const Finding &f : findings) {
        QStringList repeats;
        for (int line : f.repeats)
            repeats << QString::number(line);
        lines << Json::Object()
                     .add(QStringLiteral("file"), file)
                     .add(QStringLiteral("line"), f.line)
                     .add(QStringLiteral("severity"), f.error ? "error" : "warning")
                     .add(QStringLiteral("message"), f.message)
                     .addRaw(QStringLiteral("repeats"), Json::array(repeats))
                     .toString();
    }
    return lines;
}

QString PanelChecker::summary(const QList<Finding> &findings)
{
    int errors = 0, warnings = 0;
    for (const Finding &f : findings)
        (f.error ? errors : warnings) += 1 + f.repeats.size();
    if (errors == 0 && warnings == 0)
        return QStringLiteral("ok");
    return QStringLiteral("%1 error%2, %3 warning%4").arg(errors).arg(errors == 1 ? "" : "s").arg(warnings).arg(warnings == 1 ? "" : "s");
}
