#include "ControlTestHost.h"

#include <QtTest>
#include "support/Render.h"

/*
    Which controls tell Qt that they paint every pixel (WA_OpaquePaintEvent):
    exactly those whose picture, drawn over a clear ground, covers it. A
    control that claims it wrongly leaves stale pixels on the panel; one that
    never claims it makes Qt paint the panel below for nothing.
*/

namespace {

const RenderOptions alone{Qt::transparent, QWidget::RenderFlags(), QImage::Format_ARGB32_Premultiplied};

bool coversEveryPixel(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 255)
                return false;
        }
    }
    return !image.isNull();
}

} // namespace

class tst_Opaque : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

private slots:
    void opaqueOnlyWhenCovering_data();
    void opaqueOnlyWhenCovering();
};

void tst_Opaque::opaqueOnlyWhenCovering_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<bool>("opaque");

    const QString solid = QStringLiteral("<BackgroundColor>20,40,60</BackgroundColor>");
    const QString translucent = QStringLiteral("<BackgroundColor>20,40,60,200</BackgroundColor>");
    const QString clear = QStringLiteral("<BackgroundColor>20,40,60,0</BackgroundColor>");
    for (const char *type : {"NumberBox", "ValueText", "Text", "GraphSppHScale", "TrackingArea", "PairDeviceList"}) {
        const QString t = QLatin1String(type);
        QTest::addRow("%s, opaque background", type) << t << solid << true;
        QTest::addRow("%s, translucent background", type) << t << translucent << false;
        QTest::addRow("%s, no background", type) << t << clear << false;
    }
    // Texts and scales are clear unless told otherwise; pads and lists are not.
    QTest::newRow("ValueText, default") << "ValueText" << QString() << false;
    QTest::newRow("GraphSppHScale, default") << "GraphSppHScale" << QString() << false;
    QTest::newRow("TrackingArea, default") << "TrackingArea" << QString() << true;
    QTest::newRow("PairDeviceList, default") << "PairDeviceList" << QString() << true;
}

void tst_Opaque::opaqueOnlyWhenCovering()
{
    QFETCH(QString, type);
    QFETCH(QString, extra);
    QFETCH(bool, opaque);

    BaseWidget *w = host.make(type, QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"60\" height=\"30\"/>") + extra);
    QVERIFY(w);
    QCOMPARE(w->testAttribute(Qt::WA_OpaquePaintEvent), opaque);
    QCOMPARE(coversEveryPixel(render(w, alone)), opaque);

    // A colour set later moves the claim with it.
    w->setProperty("backgroundColor", QColor(1, 2, 3, opaque ? 100 : 255));
    QCOMPARE(w->testAttribute(Qt::WA_OpaquePaintEvent), !opaque);
    QCOMPARE(coversEveryPixel(render(w, alone)), !opaque);
}

QTEST_MAIN(tst_Opaque)
#include "tst_opaque.moc"
