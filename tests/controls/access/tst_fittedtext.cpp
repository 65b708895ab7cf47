#include "controls/ControlTestHost.h"

#include "controls/numberbox/NumberBox.h"
#include "controls/switcher/Switcher.h"
#include "core/FittedText.h"

#include <QImage>

namespace {

bool inkInColumn(const QImage &image, int x, int top, int bottom, QRgb background)
{
    for (int y = top; y <= bottom; ++y) {
        if (image.pixel(x, y) != background)
            return true;
    }
    return false;
}

// A centred text cut by its rectangle leaves ink in both edge columns.
bool inkAtEdges(const QImage &image, const QRect &r, QRgb background)
{
    return inkInColumn(image, r.left(), r.top(), r.bottom(), background)
        && inkInColumn(image, r.right(), r.top(), r.bottom(), background);
}

} // namespace

class tst_FittedText : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

private slots:
    void fit_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::newRow("label too long") << int(FittedText::Elide) << "Network" << 30;
        QTest::newRow("value too long") << int(FittedText::Shrink) << "10.00 ms / 3.43 m" << 60;
        QTest::newRow("value far too long") << int(FittedText::Shrink) << "10.00 ms / 3.43 m / 151 smp" << 40;
        QTest::newRow("fits") << int(FittedText::Shrink) << "+24" << 200;
    }

    void fit()
    {
        QFETCH(int, mode);
        QFETCH(QString, text);
        QFETCH(int, width);
        QFont font;
        font.setPointSizeF(9);
        const FittedText::Fit f = FittedText::fit(font, width, text, FittedText::Mode(mode));
        QVERIFY(QFontMetrics(f.font).horizontalAdvance(f.text) <= width);
        QVERIFY(f.font.pointSizeF() >= 9 * FittedText::minimumScale - 0.01);
        if (QFontMetrics(font).horizontalAdvance(text) <= width) {
            QCOMPARE(f.text, text);
            QCOMPARE(f.font, font);
        } else if (f.text != text) {
            // Shortened only with a mark that says so.
            QVERIFY(f.text.endsWith(QChar(0x2026)));
        }
    }

    // The same text asked again with another width, mode or font gets its own answer.
    void repeatedFits()
    {
        const QString text = QStringLiteral("10.00 ms / 3.43 m / 151 smp");
        QFont font;
        font.setPointSizeF(9);
        QFont large = font;
        large.setPointSizeF(12);
        for (int round = 0; round < 2; ++round) {
            const FittedText::Fit wide = FittedText::fit(font, 90, text, FittedText::Shrink);
            const FittedText::Fit narrow = FittedText::fit(font, 40, text, FittedText::Shrink);
            const FittedText::Fit elided = FittedText::fit(font, 90, text, FittedText::Elide);
            const FittedText::Fit big = FittedText::fit(large, 90, text, FittedText::Shrink);
            QVERIFY(QFontMetrics(narrow.font).horizontalAdvance(narrow.text) <= 40);
            QVERIFY(narrow.text != wide.text || narrow.font != wide.font);
            QCOMPARE(elided.font, font);
            QVERIFY(elided.text.endsWith(QChar(0x2026)));
            QVERIFY(big.font.pointSizeF() >= 12 * FittedText::minimumScale - 0.01);
            QVERIFY(big.font.pointSizeF() > wide.font.pointSizeF() || big.text != wide.text);
        }
    }

    // Long texts in small boxes at every zoom leave no ink cut at the edges.
    void noGlyphCut_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<float>("zoom");
        for (const char *type : {"NumberBox", "Switcher"}) {
            for (float zoom : {0.75f, 1.0f, 1.5f, 2.0f})
                QTest::addRow("%s at %g", type, double(zoom)) << QString::fromLatin1(type) << zoom;
        }
    }

    void noGlyphCut()
    {
        QFETCH(QString, type);
        QFETCH(float, zoom);
        host.zoom = zoom;
        host.setParameter(QStringLiteral("Ch1/Delay"), QStringLiteral("0.5"), QStringLiteral("10.000 ms (3.430 m)"));
        BaseWidget *w;
        QRect textBox;
        if (type == QLatin1String("NumberBox")) {
            w = host.make<NumberBox>(QStringLiteral("<Rect x='0' y='0' width='50' height='18'/>"
                                                    "<Address prmAddr='Ch1/Delay'/>"
                                                    "<BackgroundColor>0,0,0</BackgroundColor>"));
        } else {
            w = host.make<Switcher>(QStringLiteral("<Rect x='0' y='0' width='120' height='20'/>"
                                                   "<Address prmAddr='Ch1/Delay'/>"
                                                   "<Items><Item value='0'>Networking</Item>"
                                                   "<Item value='1'>Analogue inputs</Item></Items>"));
        }
        w->setZoom(zoom);
        const QImage image = w->grab().toImage();
        if (type == QLatin1String("NumberBox")) {
            textBox = QRect(0, 1, w->width(), w->height() - 1);
            QVERIFY(!inkAtEdges(image, textBox, image.pixel(0, 0)));
        } else {
            const QStringList items = w->property("items").toStringList();
            QCOMPARE(items.size(), 2);
            // The unselected segment: its edge columns just inside the 2-pixel padding.
            const int half = w->width() / 2;
            textBox = QRect(half + 2, 1, w->width() - half - 4, w->height() - 2);
            QVERIFY(!inkAtEdges(image, textBox, image.pixel(half + 1, 1)));
        }
        host.zoom = 1.0f;
    }
};

QTEST_MAIN(tst_FittedText)
#include "tst_fittedtext.moc"
