// Every XML example in docs/ is a panel (or part of one) that must pass
// panelview --check against the bundled devices and the files shipped in
// docs/examples, validate against the schema, and every script example
// must play. Device-model examples must load.
#include "ParameterDatabase.h"

#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString sourceDir = QStringLiteral(CORVANE_SOURCE_DIR);

struct Example
{
    QString file;
    int line = 0;
    QString language;
    QString text;
};

// Fenced blocks of the Markdown files under docs/.
QList<Example> examples()
{
    QList<Example> all;
    QDirIterator it(sourceDir + QLatin1String("/docs"), {QStringLiteral("*.md")}, QDir::Files, QDirIterator::Subdirectories);
    QStringList files;
    while (it.hasNext())
        files << it.next();
    files.sort();
    for (const QString &path : qAsConst(files)) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        const QStringList lines = QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'));
        Example current;
        bool inside = false;
        for (int i = 0; i < lines.size(); ++i) {
            const QString &line = lines.at(i);
            if (!inside && line.startsWith(QLatin1String("```")) && line.size() > 3) {
                inside = true;
                current = Example{QDir(sourceDir).relativeFilePath(path), i + 2, line.mid(3).trimmed(), QString()};
            } else if (inside && line.startsWith(QLatin1String("```"))) {
                inside = false;
                all << current;
            } else if (inside) {
                current.text += line + QLatin1Char('\n');
            }
        }
    }
    return all;
}

// A fragment becomes a panel on the bundled device, big enough to hold it.
QString asPanel(const QString &xml)
{
    const QString trimmed = xml.trimmed();
    if (trimmed.startsWith(QLatin1String("<Panel")))
        return xml;
    // "<!-- device: MODEL -->" puts the example on another bundled model.
    static const QRegularExpression marker(QStringLiteral("^<!-- device: (\\w+) -->"));
    const QRegularExpressionMatch m = marker.match(trimmed);
    const QString devices = m.hasMatch()
        ? QStringLiteral("  <Device id=\"%1-1\" model=\"%2\"/>\n").arg(m.captured(1).toLower(), m.captured(1))
        : QStringLiteral("  <Device id=\"vela8-1\" model=\"Vela8\"/>\n  <Device id=\"vela8-2\" model=\"Vela8\"/>\n");
    const bool widgets = trimmed.startsWith(QLatin1String("<Widget")) || m.hasMatch();
    if (widgets)
        return QStringLiteral("<Panel width=\"1000\" height=\"1000\">\n") + devices + xml + QLatin1String("</Panel>\n");
    // Address forms and other parts of a control.
    return QStringLiteral("<Panel width=\"1000\" height=\"1000\">\n") + devices
        + QLatin1String("<Widget type=\"NumberBox\" name=\"example\">\n<Rect x=\"0\" y=\"0\" width=\"60\" height=\"20\"/>\n")
        + xml + QLatin1String("</Widget>\n</Panel>\n");
}

QString panelview()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("panelview"));
}

bool copyTree(const QString &from, const QString &to)
{
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = QDir(to).filePath(QDir(from).relativeFilePath(source));
        QDir().mkpath(QFileInfo(target).absolutePath());
        if (!QFile::copy(source, target))
            return false;
    }
    return true;
}

} // namespace

class tst_Docs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void xml_data();
    void xml();
    void scripts_data();
    void scripts();

private:
    QTemporaryDir m_dir;
    QString m_schema;
};

void tst_Docs::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(copyTree(sourceDir + QLatin1String("/docs/examples"), m_dir.path()));
    QProcess p;
    p.start(panelview(), {QStringLiteral("--schema")});
    QVERIFY(p.waitForFinished(60000));
    QCOMPARE(p.exitCode(), 0);
    m_schema = m_dir.filePath(QStringLiteral("panel.xsd"));
    QFile f(m_schema);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(p.readAllStandardOutput());
}

void tst_Docs::xml_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("model");
    int count = 0;
    for (const Example &e : examples()) {
        if (e.language != QLatin1String("xml"))
            continue;
        ++count;
        const QByteArray row = QStringLiteral("%1:%2").arg(e.file).arg(e.line).toUtf8();
        QTest::newRow(row.constData()) << e.text << e.text.trimmed().startsWith(QLatin1String("<DeviceModel"));
    }
    QVERIFY(count > 20); // the extraction found the examples
}

void tst_Docs::xml()
{
    QFETCH(QString, text);
    QFETCH(bool, model);
    if (model) {
        ParameterDatabase database;
        QStringList errors;
        QVERIFY2(database.loadModel(text.toUtf8(), QStringLiteral("example"), &errors), qPrintable(errors.join(QLatin1Char('\n'))));
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('\n'))));
        return;
    }
    const QString path = m_dir.filePath(QStringLiteral("example.xml"));
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(asPanel(text).toUtf8());
    f.close();

    QProcess check;
    check.setWorkingDirectory(m_dir.path());
    check.start(panelview(), {QStringLiteral("--check"), QStringLiteral("example.xml")});
    QVERIFY(check.waitForFinished(60000));
    const QString report = QString::fromUtf8(check.readAllStandardOutput());
    QVERIFY2(report == QLatin1String("ok\n"), qPrintable(report + asPanel(text)));
    QCOMPARE(check.exitCode(), 0);

    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        QSKIP("xmllint is not installed (Debian: libxml2-utils)");
    QProcess lint;
    lint.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--schema"), m_schema, path});
    QVERIFY(lint.waitForFinished(60000));
    QVERIFY2(lint.exitCode() == 0, lint.readAllStandardError().constData());
}

void tst_Docs::scripts_data()
{
    QTest::addColumn<QString>("text");
    for (const Example &e : examples()) {
        if (e.language != QLatin1String("script"))
            continue;
        const QByteArray row = QStringLiteral("%1:%2").arg(e.file).arg(e.line).toUtf8();
        QTest::newRow(row.constData()) << e.text;
    }
}

void tst_Docs::scripts()
{
    // A script example names its panel on its first line, as scenarios do.
    QFETCH(QString, text);
    static const QRegularExpression header(QStringLiteral("^# panel: *(\\S+)"));
    const QRegularExpressionMatch m = header.match(text);
    QVERIFY2(m.hasMatch(), "a script example starts with \"# panel: FILE\"");
    const QString path = m_dir.filePath(QStringLiteral("example.script"));
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text.toUtf8());
    f.close();
    QProcess run;
    run.setWorkingDirectory(m_dir.path());
    run.start(panelview(), {m.captured(1), QStringLiteral("--script"), QStringLiteral("example.script")});
    QVERIFY(run.waitForFinished(60000));
    QVERIFY2(run.exitCode() == 0, run.readAllStandardError().constData());
}

QTEST_MAIN(tst_Docs)
#include "tst_docs.moc"
