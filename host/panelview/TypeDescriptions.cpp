#include "TypeDescriptions.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace TypeDescriptions {

QMap<QString, QString> parse(const QString &markdown)
{
    static const QRegularExpression row(QStringLiteral("^\\|\\s*`([A-Za-z0-9_]+)`\\s*\\|(.*)\\|\\s*$"));
    QMap<QString, QString> descriptions;
    bool inSection = false;
    for (const QString &line : markdown.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1Char('#'))) {
            inSection = line.trimmed() == QLatin1String("## Type names");
            continue;
        }
        if (!inSection)
            continue;
        const QRegularExpressionMatch m = row.match(line);
        if (!m.hasMatch())
            continue;
        const QString text = m.captured(2).trimmed();
        if (!text.isEmpty() && !descriptions.contains(m.captured(1)))
            descriptions.insert(m.captured(1), text);
    }
    return descriptions;
}

QMap<QString, QString> builtIn()
{
    QMap<QString, QString> all;
    const QDir pages(QStringLiteral(":/docs/controls"));
    for (const QString &name : pages.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name)) {
        QFile file(pages.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QMap<QString, QString> page = parse(QString::fromUtf8(file.readAll()));
        for (auto it = page.cbegin(); it != page.cend(); ++it) {
            if (!all.contains(it.key()))
                all.insert(it.key(), it.value());
        }
    }
    return all;
}

QStringList describe(const QStringList &names, const QMap<QString, QString> &descriptions)
{
    QStringList lines;
    lines.reserve(names.size());
    for (const QString &name : names)
        lines << name + QLatin1Char('\t') + descriptions.value(name);
    return lines;
}

} // namespace TypeDescriptions
