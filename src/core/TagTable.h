#ifndef CORVANE_TAGTABLE_H
#define CORVANE_TAGTABLE_H

#include <QDomElement>
#include <QMap>
#include <QStringList>

#include <functional>
#include <initializer_list>
#include <utility>

class BaseWidget;

/*!
    \class TagTable
    \brief The description tags one control class reads, with their handlers.

    Every class that reads tags of its own has one static table that falls
    back to its base class's table, so a lookup finds the most derived
    handler and a base's table is never copied. Handlers are member
    functions; virtual handlers dispatch as usual.
*/
class TagTable
{
public:
    using Handler = std::function<bool(BaseWidget *, const QDomElement &)>;

    template <class W>
    using Member = bool (W::*)(const QDomElement &);

    template <class W>
    static TagTable of(const TagTable *base, std::initializer_list<std::pair<const char *, Member<W>>> entries)
    {
        TagTable table(base);
        for (const auto &entry : entries) {
            const Member<W> member = entry.second;
            table.m_handlers.insert(QLatin1String(entry.first), [member](BaseWidget *w, const QDomElement &e) {
                return (static_cast<W *>(w)->*member)(e);
            });
        }
        return table;
    }

    //! The handler of \a tag in this table or the nearest base that has one; null when none.
    const Handler *find(const QString &tag) const
    {
        for (const TagTable *t = this; t; t = t->m_base) {
            const auto it = t->m_handlers.constFind(tag);
            if (it != t->m_handlers.cend())
                return &*it;
        }
        return nullptr;
    }

    //! Every tag this table and its bases handle, sorted.
    QStringList tags() const
    {
        QStringList all;
        for (const TagTable *t = this; t; t = t->m_base)
            all += t->m_handlers.keys();
        all.sort();
        all.removeDuplicates();
        return all;
    }

private:
    explicit TagTable(const TagTable *base) : m_base(base) { }

    const TagTable *m_base;
    QMap<QString, Handler> m_handlers;
};

// In a class that reads tags of its own: declares its table and the lookup
// that returns it. Define tags() with TagTable::of<Class>(&Base::tags(), {...}).
#define CORVANE_TAG_TABLE \
public: \
    static const TagTable &tags(); \
    const TagTable &tagTable() const override { return tags(); } \
private:

#endif
