#include "Discovery.h"

#include "Linter.h"
#include "PanelChecker.h"
#include "ParameterDatabase.h"
#include "TagForms.h"


#include <QMetaClassInfo>
#include <QMetaProperty>
#include <QTextStream>
#include <QWidget>


namespace Discovery {

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

QString suggestion(const QString &text, const QStringList &candidates)
{
    const QStringList near = PanelChecker::nearest(text, candidates);
    return near.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(near.join(QStringLiteral(", ")));
}

// Selector tags add addresses behind the control's own ones, in this order.
const char *const selectors[][2] = {
    {"ChNum", "the channel selector (ChNum)"},
    {"BandNum", "the band selector (BandNum)"},
    {"ModelToBaseAddressMap", "the loudspeaker-model parameter (ModelToBaseAddressMap)"},
    {"ChannelSelectAddress", "the base-address selector (ChannelSelectAddress)"},
};

} // namespace

void listModels(const ParameterDatabase &database, QTextStream &out)
{
    for (const QString &model : database.models())
        out << model << '\n';
}

bool listParameters(const ParameterDatabase &database, const QString &model, QTextStream &out, QString *error)
{
    if (!database.hasModel(model)) {
        *error = QStringLiteral("no device model \"%1\"%2").arg(model, suggestion(model, database.models()));
        return false;
    }
    out << "address\tkind\trange\tunit\toptions\n";
    for (const ParameterDefinition &d : database.definitions(model)) {
        QString range, options;
        switch (d.type) {
        case ParameterDefinition::Linear:
        case ParameterDefinition::Level:
        case ParameterDefinition::Meter:
            range = number(d.lowest()) + QLatin1String("..") + number(d.highest());
            break;
        case ParameterDefinition::Frequency: // the value is a row of the step table; show hertz
            range = d.displayText(d.lowest()).section(QLatin1Char(' '), 0, 0) + QLatin1String("..")
                + d.displayText(d.highest()).section(QLatin1Char(' '), 0, 0);
            break;
        case ParameterDefinition::Options:
        case ParameterDefinition::OnOff:
        case ParameterDefinition::State:
            options = d.options.join(QLatin1Char('|'));
            break;
        case ParameterDefinition::Text:
            if (d.maxLength > 0)
                range = QStringLiteral("up to %1 characters").arg(d.maxLength);
            break;
        }
        QString kind = ParameterDefinition::typeName(d.type);
        if (d.readOnly)
            kind += QLatin1String(" (read-only)");
        const QString unit = d.type == ParameterDefinition::Frequency ? QStringLiteral("Hz") : d.unit;
        out << d.address << '\t' << kind << '\t' << range << '\t' << unit << '\t' << options << '\n';
    }
    return true;
}

bool describe(IWidgetFactory *factory, const QStringList &typeNames, const QString &type, QTextStream &out, QString *error)
{
    const Linter::Specimen specimen(factory, type);
    QWidget *widget = specimen.widget();
    if (!widget) {
        *error = QStringLiteral("no type \"%1\"%2").arg(type, suggestion(type, typeNames));
        return false;
    }
    const QMetaObject *meta = widget->metaObject();

    QStringList chain;
    for (const QMetaObject *m = meta; m && m != &QWidget::staticMetaObject; m = m->superClass())
        chain << QString::fromLatin1(m->className());
    out << type << ": " << chain.join(QStringLiteral(" : ")) << '\n';

    QStringList tags;
    QMetaObject::invokeMethod(widget, "handledTags", Qt::DirectConnection, Q_RETURN_ARG(QStringList, tags));

    out << "\nAddresses:\n";
    const int info = meta->indexOfClassInfo("Addresses");
    if (info >= 0) {
        for (const QString &line : QString::fromUtf8(meta->classInfo(info).value()).split(QLatin1Char('|')))
            out << "  " << line << '\n';
    }
    for (const auto &selector : selectors) {
        if (tags.contains(QLatin1String(selector[0])))
            out << "  then: " << selector[1] << '\n';
    }

    out << "\nTags:\n";
    int width = 0;
    for (const QString &tag : qAsConst(tags))
        width = std::max(width, int(tag.size()));
    for (const QString &tag : qAsConst(tags)) {
        const TagForms::Entry *entry = TagForms::find(tag);
        out << "  " << tag.leftJustified(width + 2);
        if (entry)
            out << TagForms::formName(entry->form) << ": " << entry->takes;
        out << '\n';
        if (entry && entry->form == TagForms::Children) {
            for (const QString &child : entry->children) {
                const TagForms::Entry *c = TagForms::find(child, tag);
                if (c)
                    out << "    " << child << ": " << TagForms::formName(c->form) << ", " << c->takes << '\n';
            }
        }
    }

    out << "\nProperties:\n";
    for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty p = meta->property(i);
        out << "  " << p.name() << " (" << p.typeName() << (p.isWritable() ? "" : ", read-only") << ")\n";
    }
    return true;
}

} // namespace Discovery
