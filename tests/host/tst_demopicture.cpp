#include <QtTest>

#include <QDomDocument>
#include <QImage>
#include <QProcess>

namespace {

// The demo's controls, by name, from the panel description itself.
QRect rectOf(const QDomDocument &panel, const QString &name, const char *tag = "Rect")
{
    for (QDomElement w = panel.documentElement().firstChildElement("Widget"); !w.isNull();
         w = w.nextSiblingElement("Widget")) {
        if (w.attribute("name") != name)
            continue;
        const QDomElement r = w.firstChildElement(tag);
        return QRect(r.attribute("x").toInt(), r.attribute("y").toInt(), r.attribute("width").toInt(),
                     r.attribute("height").toInt());
    }
    return QRect();
}

bool lit(const QColor &c)
{
    return qMax(c.red(), qMax(c.green(), c.blue())) > 150;
}

} // namespace

// The demo picture as scripts/demo writes it: lit meters and a drawn curve.
class tst_DemoPicture : public QObject
{
    Q_OBJECT

private:
    QImage picture;
    QDomDocument panel;

private slots:
    void initTestCase()
    {
        const QString bin = QCoreApplication::applicationDirPath();
        QFile description(bin + "/panels/demo.xml");
        QVERIFY(description.open(QIODevice::ReadOnly));
        QVERIFY(panel.setContent(&description));
        const QString file = QDir(QDir::tempPath()).filePath("corvane-demo-picture.png");
        QFile::remove(file);
        QProcess panelview;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        panelview.setProcessEnvironment(env);
        panelview.start(bin + "/panelview", {"--screenshot", file, bin + "/panels/demo.xml"});
        QVERIFY(panelview.waitForFinished(60000));
        QCOMPARE(panelview.exitCode(), 0);
        QVERIFY(picture.load(file));
        QFile::remove(file);
    }

    void levelMeterIsLitFromTheBottom()
    {
        const QRect meter = rectOf(panel, "level");
        QVERIFY(meter.isValid());
        const int x = meter.center().x();
        QVERIFY(lit(picture.pixelColor(x, meter.bottom() - 2)));
        QVERIFY(!lit(picture.pixelColor(x, meter.top() + 2)));
    }

    void gainReductionIsLitFromTheTop()
    {
        const QRect meter = rectOf(panel, "gr");
        QVERIFY(meter.isValid());
        const int x = meter.center().x();
        QVERIFY(lit(picture.pixelColor(x, meter.top() + 2)));
        QVERIFY(!lit(picture.pixelColor(x, meter.bottom() - 2)));
    }

    void curveIsDrawnActive()
    {
        const QRect graph = rectOf(panel, "curve");
        QVERIFY(graph.isValid());
        int line = 0, fill = 0;
        const QColor fillOnBlack(0, 160 * 96 / 255, 255 * 96 / 255);
        for (int y = graph.top(); y <= graph.bottom(); ++y) {
            for (int x = graph.left(); x <= graph.right(); ++x) {
                const QColor c = picture.pixelColor(x, y);
                if (c.red() > 240 && c.green() > 240 && c.blue() > 240)
                    ++line;
                if (qAbs(c.red() - fillOnBlack.red()) <= 4 && qAbs(c.green() - fillOnBlack.green()) <= 4
                    && qAbs(c.blue() - fillOnBlack.blue()) <= 4)
                    ++fill;
            }
        }
        // A curve across the whole width, and the area between it and the 0 dB line filled.
        QVERIFY2(line >= graph.width(), qPrintable(QString::number(line)));
        QVERIFY2(fill >= 1000, qPrintable(QString::number(fill)));
    }
};

QTEST_GUILESS_MAIN(tst_DemoPicture)
#include "tst_demopicture.moc"
