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

#include "support/Files.h"

namespace {

const QString sourceDir = QStringLiteral(CORVANE_SOURCE_DIR);

struct Example
{
    QString file;
    int line = 0;
    QString language;
    QString name; // "```xml NAME": the example is also NAME.xml, pictured in docs/images/NAME.png
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
                const QStringList info = line.mid(3).split(QLatin1Char(' '), Qt::SkipEmptyParts);
                current = Example{QDir(sourceDir).relativeFilePath(path), i + 2, info.value(0), info.value(1), QString()};
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

// A fragment becomes a panel on the bundled device, just big enough to hold it.
QString asPanel(const QString &xml)
{
    const QString trimmed = xml.trimmed();
    static const QRegularExpression rect(QStringLiteral("<(?:Rect|ControlRect) x=\"(\\d+)\" y=\"(\\d+)\" width=\"(\\d+)\" height=\"(\\d+)\""));
    int width = 60, height = 20;
    for (QRegularExpressionMatchIterator it = rect.globalMatch(xml); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        width = std::max(width, m.captured(1).toInt() + m.captured(3).toInt() + 10);
        height = std::max(height, m.captured(2).toInt() + m.captured(4).toInt() + 10);
    }
    const QString panel = QStringLiteral("<Panel width=\"%1\" height=\"%2\">\n").arg(width).arg(height);
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
        return panel + devices + xml + QLatin1String("</Panel>\n");
    // Address forms and other parts of a control.
    return panel + devices
        + QLatin1String("<Widget type=\"NumberBox\" name=\"example\">\n<Rect x=\"0\" y=\"0\" width=\"60\" height=\"20\"/>\n")
        + xml + QLatin1String("</Widget>\n</Panel>\n");
}

// A device model, or a part of one (a model's elements other than the
// address forms that panels use).
bool isModel(const QString &xml)
{
    static const QRegularExpression first(QStringLiteral("^<(\\w+)"));
    const QString tag = first.match(xml.trimmed()).captured(1);
    return !tag.isEmpty() && tag != QLatin1String("Panel") && tag != QLatin1String("Widget")
        && tag != QLatin1String("Address") && tag != QLatin1String("AddressList");
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
    void pictures();

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
    QVERIFY(writeFile(m_schema, p.readAllStandardOutput()));

    // Named examples are panels of their own, for the scripts and the pictures.
    for (const Example &e : examples()) {
        if (e.name.isEmpty() || e.language != QLatin1String("xml"))
            continue;
        QVERIFY(writeFile(m_dir.filePath(e.name + QLatin1String(".xml")), asPanel(e.text).toUtf8()));
    }
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
        QTest::newRow(row.constData()) << e.text << isModel(e.text);
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
        const QString model = text.trimmed().startsWith(QLatin1String("<DeviceModel"))
            ? text
            : QStringLiteral("<DeviceModel name=\"Example\"><Repeat var=\"n\" from=\"1\" to=\"2\">%1</Repeat></DeviceModel>").arg(text);
        QVERIFY2(database.loadModel(model.toUtf8(), QStringLiteral("example"), &errors), qPrintable(errors.join(QLatin1Char('\n'))));
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('\n'))));
        return;
    }
    const QString path = m_dir.filePath(QStringLiteral("example.xml"));
    QVERIFY(writeFile(path, asPanel(text).toUtf8()));

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
    QVERIFY(writeFile(m_dir.filePath(QStringLiteral("example.script")), text.toUtf8()));
    QProcess run;
    run.setWorkingDirectory(m_dir.path());
    run.start(panelview(), {m.captured(1), QStringLiteral("--script"), QStringLiteral("example.script")});
    QVERIFY(run.waitForFinished(60000));
    QVERIFY2(run.exitCode() == 0, run.readAllStandardError().constData());
}

void tst_Docs::pictures()
{
    // CORVANE_DOCS_PICTURES=DIR renders every named example into DIR (scripts/docs-pictures).
    const QString target = qEnvironmentVariable("CORVANE_DOCS_PICTURES");
    // A script example of the same name is played before the picture is taken.
    QStringList names;
    const QList<Example> all = examples();
    for (const Example &e : all) {
        if (e.name.isEmpty() || e.language != QLatin1String("xml"))
            continue;
        names << e.name;
        if (target.isEmpty())
            continue;
        QStringList arguments{e.name + QLatin1String(".xml"), QStringLiteral("--screenshot"),
                              QDir(target).absoluteFilePath(e.name + QLatin1String(".png"))};
        for (const Example &s : all) {
            if (s.language == QLatin1String("script") && s.name == e.name) {
                const QString script = m_dir.filePath(e.name + QLatin1String(".script"));
                QVERIFY(writeFile(script, s.text.toUtf8()));
                arguments << QStringLiteral("--script") << script;
            }
        }
        QProcess shot;
        shot.setWorkingDirectory(m_dir.path());
        shot.start(panelview(), arguments);
        QVERIFY(shot.waitForFinished(60000));
        QVERIFY2(shot.exitCode() == 0, shot.readAllStandardError().constData());
    }
    // Every picture a page shows exists, and every named example has its picture.
    static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\(([^)]+\\.png)\\)"));
    QDirIterator it(sourceDir + QLatin1String("/docs"), {QStringLiteral("*.md")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString page = it.next();
        QFile f(page);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QRegularExpressionMatchIterator m = picture.globalMatch(QString::fromUtf8(f.readAll()));
        while (m.hasNext()) {
            const QString file = QFileInfo(page).dir().absoluteFilePath(m.next().captured(1));
            QVERIFY2(QFileInfo(file).isFile(), qPrintable(page + QLatin1String(": ") + file));
        }
    }
    for (const QString &name : qAsConst(names))
        QVERIFY2(QFileInfo(sourceDir + QLatin1String("/docs/images/") + name + QLatin1String(".png")).isFile(), qPrintable(name));
}

QTEST_MAIN(tst_Docs)
#include "tst_docs.moc"
