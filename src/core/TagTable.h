#ifndef CORVANE_TAGTABLE_H
#define CORVANE_TAGTABLE_H

#include <QColor>
#include <QDomElement>
#include <QMetaObject>
#include <QMetaProperty>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>

class BaseWidget;

/*!
    \class TagTable
    \brief The description tags one control class reads, with what each does.

    Every class that reads tags of its own has one static table that falls
    back to its base class's table, so a lookup finds the most derived entry
    and a base's table is never copied.

    An entry either calls a handler (a member function; virtual handlers
    dispatch as usual) or, for a tag that only sets one value, writes the
    element's text to a Q_PROPERTY of the class, parsed by the property's
    type, the way a form builder applies XML to properties:

    \list
    \li bool: the text "true" exactly, or in any case with ignoringCase();
        with settingOnlyTrue() other texts are refused;
    \li int: a whole decimal number within the entry's range, otherwise the
        tag is refused (so "1e400", "nan" or 2^40 never reach an int);
    \li double: a finite number ("nan" and "inf" are refused);
    \li QColor: "r,g,b[,a]" as BaseWidget::parseColor() reads it;
    \li QString: the text as written, or trimmed.
    \endlist

    A refused text leaves the property as it was. Entries are plain data:
    a lookup is a binary search over the class's sorted entries, then its
    bases', and allocates nothing.
*/
class TagTable
{
public:
    template <class W>
    using Member = bool (W::*)(const QDomElement &);

    enum class Type : quint8 { Handler, Bool, Int, Double, Color, Text };

    //! How a tag's text becomes a property value.
    struct Property
    {
        const char *name;
        Type type;
        bool trimmed = false;   // Text: leading and trailing space dropped
        bool nonEmpty = false;  // Text: an empty text is refused
        bool ignoreCase = false; // Bool: "TRUE" and "True" count as true
        bool onlyTrue = false;   // Bool: any other text is refused, so a later tag cannot clear it
        int minimum = std::numeric_limits<int>::min();
        int maximum = std::numeric_limits<int>::max();

        //! The same property, its bool text compared in any case.
        constexpr Property ignoringCase() const
        {
            Property p = *this;
            p.ignoreCase = true;
            return p;
        }
        //! The same property, set by a true text only.
        constexpr Property settingOnlyTrue() const
        {
            Property p = *this;
            p.onlyTrue = true;
            return p;
        }
        //! The same property, an empty text refused.
        constexpr Property refusingEmpty() const
        {
            Property p = *this;
            p.nonEmpty = true;
            return p;
        }
    };

    static constexpr Property boolean(const char *name) { return {name, Type::Bool}; }
    static constexpr Property integer(const char *name, int minimum = std::numeric_limits<int>::min(),
                                      int maximum = std::numeric_limits<int>::max())
    {
        return {name, Type::Int, false, false, false, false, minimum, maximum};
    }
    static constexpr Property number(const char *name) { return {name, Type::Double}; }
    static constexpr Property color(const char *name) { return {name, Type::Color}; }
    static constexpr Property text(const char *name) { return {name, Type::Text}; }
    static constexpr Property trimmedText(const char *name) { return {name, Type::Text, true}; }

    //! One row of a class's table as written: a tag and its handler or property.
    template <class W>
    struct Binding
    {
        Binding(const char *tag, Member<W> handler) : tag(tag), handler(handler), property{nullptr, Type::Handler} { }
        Binding(const char *tag, const Property &property) : tag(tag), property(property) { }

        const char *tag;
        Member<W> handler = nullptr;
        Property property;
    };

    //! One entry of a built table.
    struct Entry
    {
        QLatin1String tag;
        Member<BaseWidget> handler;
        Property property;
        const QMetaObject *metaObject; // where the property is declared
        int propertyIndex;

        bool apply(BaseWidget *w, const QDomElement &e) const;
    };

    /*!
        The table of class \a W: \a entries, then \a base's. A property entry
        names a writable Q_PROPERTY of \a W; one that does not is kept out of
        the table, listed in problems() and, in a debug build, asserted on.
    */
    template <class W>
    static TagTable of(const TagTable *base, std::initializer_list<Binding<W>> entries)
    {
        TagTable table(base);
        table.m_entries.reserve(int(entries.size()));
        for (const Binding<W> &b : entries) {
            Entry entry{QLatin1String(b.tag), static_cast<Member<BaseWidget>>(b.handler), b.property,
                        &W::staticMetaObject, -1};
            if (b.property.type != Type::Handler && !table.resolve(&entry))
                continue;
            table.m_entries.append(entry);
        }
        table.finish();
        Q_ASSERT_X(table.m_problems.isEmpty(), W::staticMetaObject.className(),
                   qPrintable(table.m_problems.join(QLatin1String("; "))));
        return table;
    }

    //! The entry of \a tag in this table or the nearest base that has one; null when none.
    const Entry *find(const QString &tag) const
    {
        for (const TagTable *t = this; t; t = t->m_base) {
            const auto it = std::lower_bound(t->m_entries.cbegin(), t->m_entries.cend(), tag,
                                             [](const Entry &e, const QString &key) { return key.compare(e.tag) > 0; });
            if (it != t->m_entries.cend() && tag == it->tag)
                return &*it;
        }
        return nullptr;
    }

    //! Applies \a e to \a w through the entry of its tag; false when none or when it was refused.
    bool apply(BaseWidget *w, const QDomElement &e) const
    {
        const Entry *entry = find(e.tagName());
        return entry && entry->apply(w, e);
    }

    //! Every tag this table and its bases handle, sorted.
    QStringList tags() const
    {
        QStringList all;
        for (const TagTable *t = this; t; t = t->m_base) {
            for (const Entry &e : t->m_entries)
                all.append(e.tag);
        }
        all.sort();
        all.removeDuplicates();
        return all;
    }

    //! Property entries of this table and its bases that name no writable property of their class, or one of another type.
    QStringList problems() const
    {
        QStringList all;
        for (const TagTable *t = this; t; t = t->m_base)
            all += t->m_problems;
        return all;
    }

private:
    explicit TagTable(const TagTable *base) : m_base(base) { }

    bool resolve(Entry *entry)
    {
        const QMetaObject *mo = entry->metaObject;
        entry->propertyIndex = mo->indexOfProperty(entry->property.name);
        const QMetaProperty p = mo->property(entry->propertyIndex);
        if (entry->propertyIndex < 0 || !p.isWritable()) {
            m_problems.append(QStringLiteral("%1: no writable property %2 in %3")
                                  .arg(entry->tag, QLatin1String(entry->property.name), QLatin1String(mo->className())));
            return false;
        }
        if (p.userType() != expectedType(entry->property.type)) {
            m_problems.append(QStringLiteral("%1: property %2 of %3 is a %4")
                                  .arg(entry->tag, QLatin1String(entry->property.name),
                                       QLatin1String(mo->className()), QLatin1String(p.typeName())));
            return false;
        }
        return true;
    }

    static int expectedType(Type type)
    {
        switch (type) {
        case Type::Bool: return QMetaType::Bool;
        case Type::Int: return QMetaType::Int;
        case Type::Double: return QMetaType::Double;
        case Type::Color: return QMetaType::QColor;
        case Type::Text: return QMetaType::QString;
        case Type::Handler: break;
        }
        return QMetaType::UnknownType;
    }

    void finish()
    {
        std::stable_sort(m_entries.begin(), m_entries.end(),
                         [](const Entry &a, const Entry &b) { return std::strcmp(a.tag.data(), b.tag.data()) < 0; });
        // A tag written twice keeps its first entry.
        m_entries.erase(std::unique(m_entries.begin(), m_entries.end(),
                                    [](const Entry &a, const Entry &b) { return a.tag == b.tag; }),
                        m_entries.end());
    }

    const TagTable *m_base;
    QVector<Entry> m_entries;
    QStringList m_problems;
};

// In a class that reads tags of its own: declares its table and the lookup
// that returns it. Define tags() with TagTable::of<Class>(&Base::tags(), {...}).
#define CORVANE_TAG_TABLE \
public: \
    static const TagTable &tags(); \
    const TagTable &tagTable() const override { return tags(); } \
private:

#endif
