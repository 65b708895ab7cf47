#ifndef CORVANE_HOST_PANELCHECKER_H
#define CORVANE_HOST_PANELCHECKER_H

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QDomElement;
class QDomNode;

/*!
    \class PanelChecker
    \brief Finds what is wrong with a panel description, line by line.

    Errors are what makes a panel wrong (unknown control types or
    parameters, malformed geometry or colours, controls that are never
    built, files that are not there); warnings are what a panel author most
    likely did not mean (tags that the control ignores, booleans that read
    as false, widgets outside the panel, duplicate names).

    The checker knows the plug-in and the devices only through the lookups
    it is given, so that it can be tested without either.
*/
class PanelChecker
{
public:
    struct Finding
    {
        int line = 0;
        bool error = false;
        QString message;
        //! Lines of the findings with the same message that collapse() folded into this one.
        QList<int> repeats = {};
    };

    enum TypeKnowledge { UnknownType, KnownType, KnownTypeWithTags };
    //! What the factory knows of \a type; with KnownTypeWithTags, \a tags holds every tag it reads.
    using TypeLookup = std::function<TypeKnowledge(const QString &type, QStringList *tags)>;
    using ModelLookup = std::function<bool(const QString &model)>;
    //! Every parameter address of \a model, in the model's order.
    using ParameterLookup = std::function<QStringList(const QString &model)>;
    enum FileKind { ImageFile, PanelFile };
    //! Whether a file named \a name in a description would be found.
    using FileLookup = std::function<bool(FileKind kind, const QString &name)>;

    PanelChecker(TypeLookup types, ModelLookup models);

    //! The type names an unknown type is compared with.
    void setTypeNames(const QStringList &names) { m_typeNames = names; }
    void setParameterLookup(ParameterLookup parameters) { m_parameters = std::move(parameters); }
    void setFileLookup(FileLookup files) { m_files = std::move(files); }

    QList<Finding> check(const QByteArray &xml) const;
    static bool hasError(const QList<Finding> &findings);
    //! Folds findings with the same severity and message into the first of them.
    static QList<Finding> collapse(const QList<Finding> &findings);
    //! "FILE:LINE: error|warning: message" lines; folded findings end with "(and N more like this)".
    static QStringList format(const QString &file, const QList<Finding> &findings);
    //! One JSON object a line: file, line, severity, message and the lines of the folded repeats.
    static QStringList formatJson(const QString &file, const QList<Finding> &findings);
    //! "N errors, M warnings", counting repeats, or "ok".
    static QString summary(const QList<Finding> &findings);

    //! The texts of \a candidates nearest to \a text by edit distance (at most \a count, close enough to be a slip).
    static QStringList nearest(const QString &text, const QStringList &candidates, int count = 3);

private:
    struct Context;
    bool checkWellFormed(const QByteArray &xml, Context &context) const;
    void checkWidget(const QDomElement &widget, Context &context) const;
    void checkElement(const QDomElement &element, const QString &parent, Context &context) const;
    void checkChildren(const QDomElement &element, const QStringList &allowed, const QString &owner, Context &context) const;
    void checkAddress(const QDomElement &address, bool needsParameter, Context &context) const;
    void checkFile(const QDomNode &node, FileKind kind, const QString &name, Context &context) const;
    void checkPlacement(const QList<QDomElement> &widgets, int width, int height, Context &context) const;

    TypeLookup m_types;
    ModelLookup m_models;
    ParameterLookup m_parameters;
    FileLookup m_files;
    QStringList m_typeNames;
};

#endif
