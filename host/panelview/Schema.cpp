#include "Schema.h"

#include "TagForms.h"

#include <QSet>
#include <QXmlStreamWriter>

namespace Schema {

namespace {

QString simpleTypeOf(TagForms::Form form)
{
    switch (form) {
    case TagForms::Boolean: return QStringLiteral("ExactBoolean");
    case TagForms::Colour: return QStringLiteral("Colour");
    case TagForms::Whole: return QStringLiteral("WholeNumber");
    case TagForms::Whole16: return QStringLiteral("xs:short");
    case TagForms::Number: return QStringLiteral("xs:double");
    case TagForms::Position: return QStringLiteral("Position");
    default: return QStringLiteral("xs:string");
    }
}

class Writer
{
public:
    explicit Writer(QString *out) : m_xml(out) { m_xml.setAutoFormatting(true); m_xml.setAutoFormattingIndent(1); }

    void start(const char *name) { m_xml.writeStartElement(QLatin1String("xs:") + QLatin1String(name)); }
    void end() { m_xml.writeEndElement(); }
    void attribute(const char *name, const QString &value) { m_xml.writeAttribute(QLatin1String(name), value); }
    QXmlStreamWriter &xml() { return m_xml; }

    void attributeOf(const QString &name, const QString &type, bool required = false)
    {
        start("attribute");
        attribute("name", name);
        attribute("type", type);
        if (required)
            attribute("use", QStringLiteral("required"));
        end();
    }

    // Attributes are free on every element but Panel and Widget: controls read many of their own.
    void anyAttribute()
    {
        start("anyAttribute");
        attribute("processContents", QStringLiteral("skip"));
        end();
    }

    void simpleContent(const QString &base)
    {
        start("simpleContent");
        start("extension");
        attribute("base", base);
        anyAttribute();
        end();
        end();
    }

    //! Any text and child elements; any attributes too with \a freeAttributes.
    void anything(bool freeAttributes = true)
    {
        attribute("mixed", QStringLiteral("true"));
        start("sequence");
        start("any");
        attribute("minOccurs", QStringLiteral("0"));
        attribute("maxOccurs", QStringLiteral("unbounded"));
        attribute("processContents", QStringLiteral("skip"));
        end();
        end();
        if (freeAttributes)
            anyAttribute();
    }

    void choiceOf(const QStringList &children, const QString &parent)
    {
        start("choice");
        attribute("minOccurs", QStringLiteral("0"));
        attribute("maxOccurs", QStringLiteral("unbounded"));
        for (const QString &child : children)
            element(child, parent);
        end();
    }

    // One element declaration, its content given by the tag's form.
    void element(const QString &tag, const QString &parent)
    {
        start("element");
        attribute("name", tag);
        if (tag == QLatin1String("Widget")) {
            attribute("type", QStringLiteral("Widget"));
            end();
            return;
        }
        const TagForms::Entry *entry = TagForms::find(tag, parent);
        const TagForms::Form form = entry ? entry->form : TagForms::Text;
        start("complexType");
        switch (form) {
        case TagForms::Boolean:
        case TagForms::Colour:
        case TagForms::Whole:
        case TagForms::Whole16:
        case TagForms::Number:
        case TagForms::Position:
            simpleContent(simpleTypeOf(form));
            break;
        case TagForms::Address:
            anything();
            break;
        case TagForms::AddressList:
            choiceOf({QStringLiteral("Address")}, tag);
            break;
        case TagForms::Children:
        case TagForms::Controls:
            if (entry->children.contains(QLatin1String("*"))) {
                anything();
                break;
            }
            attribute("mixed", QStringLiteral("true"));
            choiceOf(entry->children, tag);
            anyAttribute();
            break;
        default:
            simpleContent(QStringLiteral("xs:string"));
            break;
        }
        end();
        end();
    }

    void restriction(const char *name, const QString &base, const QString &pattern, const QStringList &values = {})
    {
        start("simpleType");
        attribute("name", QLatin1String(name));
        start("restriction");
        attribute("base", base);
        if (!pattern.isEmpty()) {
            start("pattern");
            attribute("value", pattern);
            end();
        }
        for (const QString &v : values) {
            start("enumeration");
            attribute("value", v);
            end();
        }
        end();
        end();
    }

private:
    QXmlStreamWriter m_xml;
};

} // namespace

QString generate(const QStringList &typeNames, const QMap<QString, QStringList> &tagsByType)
{
    QSet<QString> seen;
    QStringList tags;
    for (const QStringList &list : tagsByType) {
        for (const QString &tag : list) {
            if (!seen.contains(tag)) {
                seen.insert(tag);
                tags << tag;
            }
        }
    }
    tags.sort();

    QString out;
    Writer w(&out);
    w.xml().writeStartDocument();
    w.xml().writeComment(QStringLiteral(" The panel format, as panelview writes it. "));
    w.start("schema");
    w.xml().writeNamespace(QStringLiteral("http://www.w3.org/2001/XMLSchema"), QStringLiteral("xs"));
    w.attribute("elementFormDefault", QStringLiteral("qualified"));

    w.start("element");
    w.attribute("name", QStringLiteral("Panel"));
    w.attribute("type", QStringLiteral("Panel"));
    w.end();

    w.start("complexType");
    w.attribute("name", QStringLiteral("Panel"));
    w.start("choice");
    w.attribute("minOccurs", QStringLiteral("0"));
    w.attribute("maxOccurs", QStringLiteral("unbounded"));
    // A device may also carry its starting state (signals, values), read by the host.
    w.start("element");
    w.attribute("name", QStringLiteral("Device"));
    w.start("complexType");
    w.anything(false);
    for (const char *name : {"id", "model"})
        w.attributeOf(QLatin1String(name), QStringLiteral("xs:string"), true);
    w.end();
    w.end();
    w.element(QStringLiteral("Widget"), QString());
    w.end();
    for (const char *name : {"width", "height"})
        w.attributeOf(QLatin1String(name), QStringLiteral("xs:short"));
    w.attributeOf(QStringLiteral("background"), QStringLiteral("Colour"));
    w.attributeOf(QStringLiteral("name"), QStringLiteral("xs:string"));
    w.attributeOf(QStringLiteral("file"), QStringLiteral("xs:string"));
    w.end();

    w.start("complexType");
    w.attribute("name", QStringLiteral("Widget"));
    w.choiceOf(tags, QString());
    w.attributeOf(QStringLiteral("type"), QStringLiteral("TypeName"), true);
    w.attributeOf(QStringLiteral("name"), QStringLiteral("xs:string"));
    w.end();

    w.restriction("TypeName", QStringLiteral("xs:string"), QString(), typeNames);
    w.restriction("ExactBoolean", QStringLiteral("xs:string"), QString(), {QStringLiteral("true"), QStringLiteral("false")});
    w.restriction("Colour", QStringLiteral("xs:string"),
                  QStringLiteral("\\s*\\d{1,3}\\s*,\\s*\\d{1,3}\\s*,\\s*\\d{1,3}\\s*(,\\s*\\d{1,3}\\s*)?"));
    w.restriction("WholeNumber", QStringLiteral("xs:string"), QStringLiteral("\\s*[\\-+]?\\d+\\s*"));
    w.restriction("Position", QStringLiteral("xs:string"), QStringLiteral("\\s*(0(\\.\\d*)?|1(\\.0*)?|\\.\\d+)\\s*"));
    w.end();
    w.xml().writeEndDocument();
    return out;
}

} // namespace Schema
