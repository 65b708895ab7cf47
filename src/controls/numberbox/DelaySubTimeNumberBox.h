#ifndef CORVANE_CONTROLS_NUMBERBOX_DELAYSUBTIMENUMBERBOX_H
#define CORVANE_CONTROLS_NUMBERBOX_DELAYSUBTIMENUMBERBOX_H

#include "controls/numberbox/NumberBox.h"

/*!
    \class DelaySubTimeNumberBox
    \brief A delay time typed in milliseconds, metres, feet or samples.

    Bound to two parameters: the first is the unit selector, whose display
    text is "meter", "feet", "sample" or anything else for milliseconds; the
    second is the delay time, which the box shows and changes. A box bound to
    the delay time alone types in milliseconds.

    Milliseconds go to the database as typed. A distance or a sample count
    is first turned into the delay parameter's position by the database's
    delay conversion (IAbstractDB::convertDelay()), which knows the speed of
    sound and the device's sampling frequency; the position is then set.
    Nothing is sent for an empty text or a text the conversion refuses.
*/
class DelaySubTimeNumberBox : public NumberBox
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the unit selector (with one address: the delay time in milliseconds)|1: the delay time")
    Q_PROPERTY(QString unit READ unit)
    Q_PROPERTY(bool spaceDelete READ spaceDelete WRITE setSpaceDelete)

public:
    using NumberBox::NumberBox;

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    //! "ms", "meter", "feet", "sample" (or "frame" where the box takes frames).
    virtual QString unit() const;
    bool spaceDelete() const { return m_spaceDelete; }
    void setSpaceDelete(bool on);

    QString shownText() const override;

protected:
    int valueIndex() const override;
    QString editorStartText() const override;
    void commitText(const QString &text) override;

    //! The units typed as something other than milliseconds.
    virtual QStringList convertedUnits() const;
    //! What the conversion is told about the delay parameter.
    virtual QVariantMap conversionAddress() const;
    //! The unit selector's text, empty when there is none.
    QString selectorText() const;

private:
    bool m_spaceDelete = false;
};

/*!
    \class FixedScaleDelaySubTimeNumberBox
    \brief A delay box that also takes video frames, and whose unit may be
    fixed by "FixedScale" instead of a selector.

    Addresses prefixed "Link:" (a delay shared by a link group) are converted
    against the delay parameter they stand for.
*/
class FixedScaleDelaySubTimeNumberBox : public DelaySubTimeNumberBox
{
    Q_OBJECT
    Q_PROPERTY(QString fixedScale READ fixedScale WRITE setFixedScale)

public:
    using DelaySubTimeNumberBox::DelaySubTimeNumberBox;

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    QString unit() const override;
    QString fixedScale() const { return m_fixedScale; }
    void setFixedScale(const QString &scale) { updateMember(m_fixedScale, scale); }


protected:
    QStringList convertedUnits() const override;
    QVariantMap conversionAddress() const override;

private:
    QString m_fixedScale;
};

#endif
