#ifndef CORVANE_TESTS_FAKEDATABASE_H
#define CORVANE_TESTS_FAKEDATABASE_H

#include <corvane/IAbstractDB.h>

/*
    A database for tests: answers queryParameter from a table per model and
    records every query it is asked.
*/
class FakeDatabase : public IAbstractDB
{
public:
    struct Query
    {
        QString model;
        QVariantMap request;
    };

    // model -> (dev_uniq_id -> answer); a model absent from the table is refused.
    QMap<QString, QMap<QString, QVariantMap>> answers;
    mutable QList<Query> queries;
    QString name = QStringLiteral("fake");

    QStringList devices() const override { return { name }; }
    QVariantMap device(const QString &) const override { return {}; }
    bool readParameter(const QVariantMap &, QVariantMap &) const override { return false; }
    bool queryParameter(const QString &model, const QVariantMap &request,
                        QMap<QString, QVariantMap> &answer) const override
    {
        queries.append({ model, request });
        const auto it = answers.constFind(model);
        if (it == answers.constEnd())
            return false;
        answer = it.value();
        return true;
    }
    bool request(const QVariantMap &, int, const QMap<QString, QString> &) override { return false; }
    bool parameterExists(const QVariantMap &) const override { return false; }
    QString convertDelay(const QVariantMap &, const QString &, const QString &) const override { return {}; }
    void setObserver(IParameterObserver *) override { }
};

#endif
