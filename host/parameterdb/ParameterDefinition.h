#ifndef CORVANE_HOST_PARAMETERDEFINITION_H
#define CORVANE_HOST_PARAMETERDEFINITION_H

#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVector>

class QDomElement;

/*!
    \class ParameterDefinition
    \brief One parameter of a device model: its type, range and text form.

    Numeric parameters hold a double: the value itself for linear and level
    parameters, the row of the frequency table for frequencies, the index of
    the option for option lists and on/off switches. Text parameters hold
    text only.

    The conversions here are everything the simulated database knows about
    values: position to value along the curve, typed text to value, steps,
    and the display text.
*/
class ParameterDefinition
{
public:
    enum Type { Linear, Level, Frequency, Options, OnOff, Text, Meter, State };

    QString address;
    Type type = Linear;
    double minimum = 0;
    double maximum = 1;
    double step = 1;
    double defaultValue = 0;
    int decimals = 0;
    QString unit;
    QStringList options;
    //! (position, value) breakpoints, ascending in both; empty for a straight line.
    QVector<QPointF> curve;
    //! Level parameters: the minimum shows as "-inf".
    bool minusInfinity = false;
    bool readOnly = false;
    QString defaultText;
    int maxLength = 0;

    static QString typeName(Type type);
    static bool typeFromName(const QString &name, Type *type);

    //! Reads a "Parameter" element of a device model file; false with \a error set when it is malformed.
    static bool fromElement(const QDomElement &element, ParameterDefinition *definition, QString *error);

    bool isNumeric() const { return type != Text && type != State; }

    //! The value at \a position (0 to 1, clamped), rounded to the parameter's resolution.
    double valueAt(double position) const;
    //! The position (0 to 1) of \a value.
    double positionOf(double value) const;
    //! Parses typed text (units accepted) into a clamped, rounded value; false when it is not a value.
    bool parse(const QString &text, double *value) const;
    //! \a value moved by \a steps steps, clamped.
    double stepped(double value, int steps) const;
    //! The display text of \a value, units and all.
    QString displayText(double value) const;
    //! The clamped and rounded form of \a value.
    double normalized(double value) const;
    //! The text of a position as the database hands it out: 6 significant digits.
    static QString positionText(double position);
    //! The text of a value as the database hands it out ("prmValue"): 10 significant digits.
    static QString valueText(double value);

    double lowest() const;
    double highest() const;

private:
    double rounded(double value) const;
};

#endif
