#ifndef CORVANE_VALUE_H
#define CORVANE_VALUE_H

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

/*!
    \class Value
    \brief A parameter's attribute texts plus one typed payload.

    Values pass between a control, its parameter addresses and the host. The
    attributes are an ordered map of texts ("ui_prm_val", "ui_prm_str",
    "prmAddr", ...); the payload carries a typed value where one is needed.
    Both members are implicitly shared, so copies are cheap.

    The mutators report whether anything changed so that callers can skip a
    repaint when nothing did.
*/
class Value
{
public:
    Value() = default;
    Value(const Value &) = default;
    Value &operator=(const Value &) = default;

    // The virtual operations below are binary interface, in this order:
    // set is the first slot, the destructor comes after isEmpty.
    //! Stores \a text under \a key; false when the key already held exactly that text.
    virtual bool set(const QString &key, const QString &text);
    //! The text of \a key, or an empty string when absent. Never inserts.
    virtual QString text(const QString &key) const;
    //! All keys, in ascending order.
    virtual QStringList keys() const;
    //! Removes \a key; always true.
    virtual bool remove(const QString &key);
    //! Takes over \a other's attributes, keeping keys it does not hold; true when any key was added or changed.
    virtual bool assign(const Value &other);
    //! True when there are no attributes; the payload does not count.
    virtual bool isEmpty() const;
    virtual ~Value() = default;

    bool contains(const QString &key) const { return m_attributes.contains(key); }
    QVariant &payload() { return m_payload; }
    const QVariant &payload() const { return m_payload; }
    void setPayload(const QVariant &payload) { m_payload = payload; }

    const QMap<QString, QString> &attributes() const { return m_attributes; }

    bool operator==(const Value &other) const;
    bool operator!=(const Value &other) const { return !(*this == other); }

private:
    QMap<QString, QString> m_attributes;
    QVariant m_payload;
};

Q_DECLARE_METATYPE(Value)

#endif
