#include "AddressBinding.h"

#include "data/ParameterKeys.h"

#include <corvane/ParameterManagement.h>

#include <QRegularExpression>

AddressBinding::Category AddressBinding::categoryOf(const QString &prmAddr)
{
    static const struct
    {
        QLatin1String prefix;
        Category category;
    } prefixes[] = {
        {latin1Literal("Graph:"), Graph},           {latin1Literal("Meter:"), Meter},
        {latin1Literal("Local:"), Local},           {latin1Literal("Preference:"), Preference},
        {latin1Literal("Editor:"), Editor},
    };
    for (const auto &p : prefixes) {
        if (prmAddr.startsWith(p.prefix))
            return p.category;
    }
    return Prm;
}

QString AddressBinding::categoryName(Category category)
{
    return ParameterManagementRegistry::categories().at(category);
}

int AddressBinding::ownCount() const
{
    int n = 0;
    for (const Entry &e : m_entries)
        n += e.isSelector() ? 0 : 1;
    return n;
}

int AddressBinding::indexOfType(const QString &type) const
{
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).type == type)
            return i;
    }
    return -1;
}

int AddressBinding::insert(ParameterAddress address)
{
    Entry entry;
    QVariantMap &keys = address.keys();
    entry.type = keys.value(Key::AddrType).toString();
    const QVariant written = keys.value(Key::prmAddr);
    entry.templ = written.toString();
    bool complete = true;
    const QString prmAddr = bound(entry.templ, &complete);
    // A template without placeholders is bound as it is: the key already
    // holds that text unless it held another type.
    if (!complete)
        keys.remove(Key::prmAddr);
    else if (!prmAddr.isSharedWith(entry.templ) || written.userType() != QMetaType::QString)
        keys.insert(Key::prmAddr, prmAddr);
    entry.category = categoryOf(prmAddr);
    entry.address = std::move(address);

    int at = m_entries.size();
    if (!entry.isSelector()) {
        while (at > 0 && m_entries.at(at - 1).isSelector())
            --at;
    }
    m_entries.insert(at, std::move(entry));
    return at;
}

void AddressBinding::setTemplate(int index, const QString &templ)
{
    if (contains(index))
        m_entries[index].templ = templ;
}

bool AddressBinding::bind(int index, QVariantMap &keys) const
{
    if (!contains(index))
        return false;
    bool complete = true;
    const QString prmAddr = bound(m_entries.at(index).templ, &complete);
    if (complete)
        keys.insert(Key::prmAddr, prmAddr);
    else
        keys.remove(Key::prmAddr);
    return keys != m_entries.at(index).address.keys();
}

void AddressBinding::assign(int index, QVariantMap keys)
{
    if (!contains(index))
        return;
    Entry &entry = m_entries[index];
    entry.category = categoryOf(keys.value(Key::prmAddr).toString());
    entry.address.keys() = std::move(keys);
    entry.address.value() = Value();
}

QString AddressBinding::bound(const QString &templ, bool *complete) const
{
    *complete = true;
    if (!templ.contains(QLatin1Char('{')))
        return templ;
    static const QRegularExpression placeholderPattern(QStringLiteral("\\{([A-Za-z0-9_]+)\\}"));
    QString result;
    int last = 0;
    auto it = placeholderPattern.globalMatch(templ);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        result += templ.midRef(last, m.capturedStart() - last);
        const auto value = m_placeholders.constFind(m.captured(1));
        if (value == m_placeholders.cend())
            *complete = false;
        else
            result += *value;
        last = m.capturedEnd();
    }
    result += templ.midRef(last);
    return result;
}

QVector<int> AddressBinding::setPlaceholder(const QString &name, const QString &value)
{
    const auto it = m_placeholders.constFind(name);
    if (it != m_placeholders.cend() && *it == value)
        return {};
    m_placeholders.insert(name, value);
    const QString token = QLatin1Char('{') + name + QLatin1Char('}');
    QVector<int> users;
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).templ.contains(token))
            users.append(i);
    }
    return users;
}
