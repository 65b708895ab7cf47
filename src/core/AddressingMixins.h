#ifndef CORVANE_ADDRESSINGMIXINS_H
#define CORVANE_ADDRESSINGMIXINS_H

#include "data/ParameterKeys.h"
#include "BaseWidget.h"

#include <QStringList>

/*
    Ways a variant finds its parameter addresses, each written once and mixed
    into any control family: ChannelSelect<Dial>, Speaker<NumberBox>, ...

    Addresses of these variants are templates ("In/Ch{ChNum}/Gain"). A
    selector, itself a bound parameter of type "AddrType" (channel number,
    band, speaker model), fills a placeholder whenever its value changes, and
    the control rebinds every address that uses it. Selectors sit behind the
    control's own addresses, so index 0 stays the control's parameter.

    The mixins are plain templates: the Q_OBJECT variant classes derive from
    an instantiation (moc cannot process templated Q_OBJECT classes).
*/
namespace Addressing {

//! The number a selector at \a index stands for: its display text when that is an integer, otherwise its step on
//! the selector's "range", plus the selector's "offset"; empty while it has no value.
QString selectorNumber(const BaseWidget &widget, int index);

//! Appends the selector \a e describes, or fixes \a placeholder when \a e holds only a number.
bool readSelector(BaseWidget &widget, const QDomElement &e, const QString &placeholder);

/*!
    A list of values that switches a control state (hidden, refusing focus,
    disabled) while a parameter holds one of them. The current value is the
    parameter's display text with the string flag, otherwise its step on a
    scale of "range" steps.
*/
class ValueGate
{
public:
    bool readValues(const QDomElement &e);
    bool readRange(const QDomElement &e);
    bool readStringFlag(const QDomElement &e);
    void setValues(const QStringList &values) { m_values = values; }
    QStringList values() const { return m_values; }
    int steps() const { return m_steps; }
    bool byString() const { return m_byString; }
    QString currentText(const BaseWidget &widget, int index) const;
    bool matches(const BaseWidget &widget, int index) const;

private:
    QStringList m_values;
    int m_steps = 0;
    bool m_byString = false;
};

} // namespace Addressing

/*!
    The address follows a number chosen by a selector parameter: the tag
    named by \a Selector names the selector (an address, with optional
    "range" and "offset") or holds a fixed number, and addresses use the
    placeholder \a Selector::placeholder.
*/
template <class Base, class Selector>
class NumberSelected : public Base
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<NumberSelected>(&Base::tags(), {
            {Selector::tag, &NumberSelected::readSelectorTag},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readSelectorTag(const QDomElement &e)
    {
        return Addressing::readSelector(*this, e, QLatin1String(Selector::placeholder));
    }

protected:
    void typedAddressChanged(const QString &type, int index) override
    {
        if (type == QLatin1String(Selector::placeholder))
            this->setPlaceholder(type, Addressing::selectorNumber(*this, index));
        Base::typedAddressChanged(type, index);
    }
};

namespace Addressing {
struct ChannelSelector
{
    static constexpr const char *tag = "ChNum";
    static constexpr const char *placeholder = "ChNum";
};
struct BandSelector
{
    static constexpr const char *tag = "BandNum";
    static constexpr const char *placeholder = "Band";
};
} // namespace Addressing

//! The address follows the selected channel ("ChNum", placeholder "{ChNum}").
template <class Base>
class ChannelSelect : public NumberSelected<Base, Addressing::ChannelSelector>
{
public:
    using NumberSelected<Base, Addressing::ChannelSelector>::NumberSelected;
};

//! The address follows the selected band of a shared band set ("BandNum", placeholder "{Band}").
template <class Base>
class BandSharing : public NumberSelected<Base, Addressing::BandSelector>
{
public:
    using NumberSelected<Base, Addressing::BandSelector>::NumberSelected;
};

/*!
    Binds to a tuning zone rather than a single device: every address gets
    the zone's "zone_uniq_id" (from the "Zone" tag, else from the host's
    editor information), which also fills "{Zone}".
*/
class TuningZoneAddressing
{
public:
    QString zone() const { return m_zone; }

protected:
    bool readZone(BaseWidget &widget, const QDomElement &e);
    void completeKeys(const BaseWidget &widget, QVariantMap &keys) const;

    QString m_zone;
};

template <class Base>
class TuningZone : public Base, protected TuningZoneAddressing
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<TuningZone>(&Base::tags(), {
            {"Zone", &TuningZone::readZoneTag},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readZoneTag(const QDomElement &e) { return readZone(*this, e); }

protected:
    void completeAddressKeys(QVariantMap &keys) const override
    {
        Base::completeAddressKeys(keys);
        completeKeys(*this, keys);
    }
};

/*!
    The address depends on the loudspeaker model connected to the channel:
    "ModelToBaseAddressMap" maps model names to base addresses and may name
    the model parameter; "DEFAULT" is the base address of unlisted models;
    "BaseAddressList" with a "ChannelSelectAddress" selector picks a base
    address by index instead. The base fills "{BaseAddress}";
    "AddressIndexY" fills "{indexY}".
*/
class SpeakerAddressing
{
public:
    QMap<QString, QString> modelMap() const { return m_modelMap; }
    QString defaultBase() const { return m_default; }
    QStringList baseAddressList() const { return m_baseList; }

    //! The port of the device whose connected loudspeaker the widget follows; -1 when none is named.
    int connectedPort() const { return m_port; }
    //! The address of the parameter naming the loudspeaker connected at \a port.
    QString portAddress(int port) const;

protected:
    bool readModelMap(const QDomElement &e);
    bool readBaseAddressList(const QDomElement &e);
    //! Reads "connect_port_inedx" and "extdev_speaker_ports"; false when no port is named.
    bool readConnectedPort(const QDomElement &e);
    //! The base address for the selector of \a type at \a index.
    QString baseFor(const BaseWidget &widget, const QString &type, int index) const;

    QMap<QString, QString> m_modelMap;
    QString m_default;
    QStringList m_baseList;
    QString m_portPattern;
    int m_port = -1;
};

template <class Base>
class Speaker : public Base, protected SpeakerAddressing
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<Speaker>(&Base::tags(), {
            {"ModelToBaseAddressMap", &Speaker::readModelToBaseAddressMap},
            {"BaseAddressList", &Speaker::readBaseAddressListTag},
            {"ChannelSelectAddress", &Speaker::readChannelSelectAddress},
            {"DEFAULT", &Speaker::readDefault},
            {"AddressIndexY", &Speaker::readAddressIndexY},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readModelToBaseAddressMap(const QDomElement &e)
    {
        readModelMap(e);
        const QDomElement selector = e.firstChildElement(QStringLiteral("Address"));
        if (!selector.isNull())
            return this->appendAddress(selector, QStringLiteral("SpeakerModel"));
        if (e.hasAttribute(Key::prmAddr)) {
            QVariantMap keys = BaseWidget::parseAddressKeys(e);
            return this->appendAddress(keys, QStringLiteral("SpeakerModel"));
        }
        // The loudspeaker connected at a port of the device: its model is
        // the text of the port's connection parameter.
        if (readConnectedPort(e)) {
            const QVariantMap keys{{QString(Key::prmAddr), portAddress(connectedPort())}};
            return this->appendAddress(keys, QStringLiteral("SpeakerModel"));
        }
        updateBase(QString());
        return true;
    }
    bool readBaseAddressListTag(const QDomElement &e) { return readBaseAddressList(e); }
    bool readChannelSelectAddress(const QDomElement &e)
    {
        return this->appendAddress(e, QStringLiteral("SpeakerChannel"));
    }
    bool readDefault(const QDomElement &e)
    {
        m_default = e.text().trimmed();
        // A selector read before "DEFAULT" may have found nothing better.
        const int model = this->indexOfAddressType(QStringLiteral("SpeakerModel"));
        const int channel = this->indexOfAddressType(QStringLiteral("SpeakerChannel"));
        if (model >= 0)
            updateBase(QStringLiteral("SpeakerModel"), model);
        else if (channel >= 0)
            updateBase(QStringLiteral("SpeakerChannel"), channel);
        else
            updateBase(QString());
        return true;
    }
    bool readAddressIndexY(const QDomElement &e)
    {
        this->setPlaceholder(QStringLiteral("indexY"), e.text().trimmed());
        return true;
    }

protected:
    void updateBase(const QString &type, int index = -1)
    {
        const QString base = baseFor(*this, type, index);
        if (!base.isEmpty())
            this->setPlaceholder(QStringLiteral("BaseAddress"), base);
    }
    void typedAddressChanged(const QString &type, int index) override
    {
        if (type == QLatin1String("SpeakerModel") || type == QLatin1String("SpeakerChannel"))
            updateBase(type, index);
        Base::typedAddressChanged(type, index);
    }
};

/*!
    One cell of a matrix: "AddressForm" (or "AddressFormANC", the form of the
    acoustic-noise-control matrix) is the address template with "{x}" and
    "{y}"; "XIndex" and "YIndex" fill them.
*/
template <class Base>
class MatrixCell : public Base
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<MatrixCell>(&Base::tags(), {
            {"AddressForm", &MatrixCell::readAddressForm},
            {"AddressFormANC", &MatrixCell::readAddressForm},
            {"XIndex", &MatrixCell::readXIndex},
            {"YIndex", &MatrixCell::readYIndex},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readAddressForm(const QDomElement &e) { return this->appendAddress(e); }
    bool readXIndex(const QDomElement &e)
    {
        this->setPlaceholder(QStringLiteral("x"), e.text().trimmed());
        return true;
    }
    bool readYIndex(const QDomElement &e)
    {
        this->setPlaceholder(QStringLiteral("y"), e.text().trimmed());
        return true;
    }
};

/*!
    Switches a control state while the control's parameter (index 0 unless
    gateIndex() says otherwise) holds
    one of the listed values: \a Gate names the tag of the list and what
    matching does to the control. "range" gives the steps the position is
    read on; with "StrValFlg" the display text is compared instead.
*/
template <class Base, class Gate>
class ValueGated : public Base
{
public:
    ValueGated(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : Base(hostCore, registry, parent)
    {
        Gate::prepare(*this);
    }

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<ValueGated>(&Base::tags(), {
            {"range", &ValueGated::readRange},
            {Gate::valuesTag, &ValueGated::readGateValues},
            {"StrValFlg", &ValueGated::readStrValFlg},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readRange(const QDomElement &e) { return m_gate.readRange(e) && apply(); }
    bool readGateValues(const QDomElement &e) { return m_gate.readValues(e) && apply(); }
    bool readStrValFlg(const QDomElement &e) { return m_gate.readStringFlag(e) && apply(); }
    //! Whether the tested parameter holds one of the listed values now.
    bool isGated() const { return m_gate.matches(*this, gateIndex()); }
    QStringList gateValues() const { return m_gate.values(); }

protected:
    //! The address whose value is tested; -1 while there is none.
    virtual int gateIndex() const { return 0; }

    bool apply()
    {
        // Without a list, or a parameter to test, the host's own choice of
        // state is left alone.
        if (!m_gate.values().isEmpty() && gateIndex() >= 0)
            Gate::apply(*this, isGated());
        return true;
    }
    void ownValueChanged(int index) override
    {
        if (index == gateIndex())
            apply();
        Base::ownValueChanged(index);
    }
    // Without addresses of its own a control may test a selector.
    void typedAddressChanged(const QString &type, int index) override
    {
        if (index == gateIndex())
            apply();
        Base::typedAddressChanged(type, index);
    }

    Addressing::ValueGate m_gate;
};

namespace Addressing {
struct RejectGate
{
    static constexpr const char *valuesTag = "RejectValue";
    static void prepare(QWidget &w) { w.setFocusPolicy(Qt::NoFocus); }
    static void apply(QWidget &w, bool reject)
    {
        if (reject && w.hasFocus())
            w.clearFocus();
        w.setEnabled(!reject);
    }
};
struct HideGate
{
    static constexpr const char *valuesTag = "HideValue";
    static void prepare(QWidget &) { }
    static void apply(QWidget &w, bool hide) { w.setVisible(!hide); }
};
} // namespace Addressing

//! Refuses the keyboard focus, and all input (disabled) while the parameter holds a "RejectValue".
template <class Base>
class RejectFocus : public ValueGated<Base, Addressing::RejectGate>
{
public:
    using ValueGated<Base, Addressing::RejectGate>::ValueGated;
};

//! Hidden while the parameter holds a "HideValue".
template <class Base>
class Hide : public ValueGated<Base, Addressing::HideGate>
{
public:
    using ValueGated<Base, Addressing::HideGate>::ValueGated;
};

#endif
