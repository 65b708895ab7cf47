#ifndef CORVANE_HOST_PANELCHECKER_H
#define CORVANE_HOST_PANELCHECKER_H

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QDomElement;

/*!
    \class PanelChecker
    \brief Finds what is wrong with a panel description, line by line.

    Errors are what makes a panel wrong (unknown control types, malformed
    geometry or colours, addresses that cannot name a device); warnings are
    what a panel author most likely did not mean (tags that the control
    ignores, devices of unknown models, duplicate names).
*/
class PanelChecker
{
public:
    struct Finding
    {
        int line = 0;
        bool error = false;
        QString message;
    };

    enum TypeKnowledge { UnknownType, KnownType, KnownTypeWithTags };
    //! What the factory knows of \a type; with KnownTypeWithTags, \a tags holds every tag it reads.
    using TypeLookup = std::function<TypeKnowledge(const QString &type, QStringList *tags)>;
    using ModelLookup = std::function<bool(const QString &model)>;

    PanelChecker(TypeLookup types, ModelLookup models);

    QList<Finding> check(const QByteArray &xml) const;
    static bool hasError(const QList<Finding> &findings);
    //! "FILE:LINE: error|warning: message" lines.
    static QStringList format(const QString &file, const QList<Finding> &findings);

private:
    struct Context;
    void checkWidget(const QDomElement &widget, Context &context) const;
    void checkForms(const QDomElement &element, Context &context) const;
    void checkAddress(const QDomElement &address, Context &context) const;

    TypeLookup m_types;
    ModelLookup m_models;
};

#endif
