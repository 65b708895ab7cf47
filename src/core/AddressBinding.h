#ifndef CORVANE_ADDRESSBINDING_H
#define CORVANE_ADDRESSBINDING_H

#include <QHash>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <corvane/ParameterAddress.h>

/*!
    \class AddressBinding
    \brief The parameter addresses of one control, their templates and the placeholders that bind them.

    Each entry keeps the address as bound now, its "prmAddr" as written (a
    template such as "In/Ch{ChNum}/Gain"), the registry category of the bound
    address, whether it is registered, and its role: an entry with an
    "AddrType" is a selector, whose value fills a placeholder of the others,
    rather than a parameter the control shows. Selectors sit behind the
    control's own addresses, so that the indexes a description gives do not
    depend on element order and index 0 is the control's own parameter.

    A template stays unbound (no "prmAddr") until every placeholder in it
    has a value. The binding knows nothing of widgets or registries: the
    owner registers, unregisters and re-reads what the binding reports as
    changed.
*/
class AddressBinding
{
public:
    //! The registry categories, in the registry's order of category words.
    enum Category { Prm, Meter, Graph, Local, Preference, Editor };

    struct Entry
    {
        ParameterAddress address;
        QString templ;        // "prmAddr" as written
        QString type;         // "AddrType"; empty for the control's own addresses
        Category category = Prm;
        bool registered = false;

        bool isSelector() const { return !type.isEmpty(); }
    };

    //! The category a parameter address's prefix chooses ("Meter:..." is Meter, no known prefix Prm).
    static Category categoryOf(const QString &prmAddr);
    //! The registry's word for \a category.
    static QString categoryName(Category category);

    int count() const { return m_entries.size(); }
    bool contains(int index) const { return index >= 0 && index < m_entries.size(); }
    //! The number of entries that are not selectors.
    int ownCount() const;
    //! True for a selector entry; false outside the list.
    bool isSelector(int index) const { return contains(index) && m_entries.at(index).isSelector(); }
    //! The "AddrType" of \a index, empty for own entries and outside the list.
    QString selectorType(int index) const { return contains(index) ? m_entries.at(index).type : QString(); }
    //! Index of the first selector of \a type, or -1.
    int indexOfType(const QString &type) const;

    //! Entry \a index, which must be inside the list.
    const Entry &at(int index) const { return m_entries.at(index); }
    Entry &operator[](int index) { return m_entries[index]; }
    const QVector<Entry> &entries() const { return m_entries; }

    /*!
        Inserts \a address, whose "prmAddr" key holds the template, bound
        through the current placeholders, and returns its index: a selector
        (an "AddrType" key) at the end, any other entry before the
        selectors. The entry is not registered.
    */
    int insert(ParameterAddress address);
    //! Replaces the template of \a index; the caller rebinds.
    void setTemplate(int index, const QString &templ);
    /*!
        Sets "prmAddr" in \a keys to the template of \a index bound through
        the placeholders, or removes it while a placeholder has no value.
        Returns whether the keys differ from the entry's.
    */
    bool bind(int index, QVariantMap &keys) const;
    //! Makes \a keys the entry's address and takes its category from them; the value is cleared.
    void assign(int index, QVariantMap keys);

    //! \a templ with every placeholder replaced; \a complete is false when one has no value.
    QString bound(const QString &templ, bool *complete) const;
    QString placeholder(const QString &name) const { return m_placeholders.value(name); }
    bool hasPlaceholder(const QString &name) const { return m_placeholders.contains(name); }
    /*!
        Sets placeholder \a name and returns the entries whose template
        uses it, in list order; none when the value did not change.
    */
    QVector<int> setPlaceholder(const QString &name, const QString &value);

private:
    QVector<Entry> m_entries;
    QHash<QString, QString> m_placeholders;
};

#endif
