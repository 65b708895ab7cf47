#include "controls/ControlTestHost.h"

#include "controls/image/image_variants.h"
#include "controls/common/ImageSource.h"

#include <QFile>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include "support/Files.h"
#include "support/Pixels.h"
#include "support/Render.h"
#include "support/PaintRecorder.h"

namespace {

const QColor panel(10, 20, 30);
const QColor red(220, 0, 0);
const QColor green(0, 200, 0);
const QColor blue(0, 0, 220);
const QColor grey(128, 128, 128);

bool near(const QColor &a, const QColor &b, int tolerance = 20)
{
    return Pixels::near(a, b, tolerance);
}

//! The bounding box of the pixels near \a colour.
QRect inkBox(const QImage &image, const QColor &colour)
{
    return Pixels::inkBox(image, colour, 20);
}

const QVariantMap state{{"prmAddr", "Ch/State"}, {"dev_uniq_id", "dev1"}};

} // namespace

class tst_Image : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    QTemporaryDir imageDir;

    static QString rect(int w, int h)
    {
        return QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"%1\" height=\"%2\"/>").arg(w).arg(h);
    }
    template <class W = Image>
    W *make(const QString &extra, int w = 40, int h = 40)
    {
        return host.make<W>(rect(w, h) + extra);
    }
    Image *variant(const QString &type, const QString &extra);
    void setState(const QString &val)
    {
        host.setParameter(QStringLiteral("Ch/State"), val, val);
        host.setParameter(QStringLiteral("In2/State"), val, val);
        host.setParameter(QStringLiteral("Sp/State"), val, val);
    }

private slots:
    void initTestCase();
    void init();
    void drawing_data();
    void drawing();
    void parameterImage_data();
    void parameterImage();
    void imageChangesRepaintOnlyOnChange();
    void greaterThan_data();
    void greaterThan();
    void imageStackerPages();
    void selectFrame_data();
    void selectFrame();
    void parameterColor_data();
    void parameterColor();
    void renderOptions_data();
    void renderOptions();
};

void tst_Image::initTestCase()
{
    QVERIFY(imageDir.isValid());
    const QList<QPair<QString, QColor>> files{{"red.png", red}, {"green.png", green}, {"blue.png", blue},
                                              {"grey.png", grey}};
    for (const auto &f : files) {
        QImage image(20, 10, QImage::Format_ARGB32);
        image.fill(f.second);
        QVERIFY(image.save(imageDir.filePath(f.first)));
    }
    QVERIFY(writeFile(imageDir.filePath(QStringLiteral("tall.svg")),
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"20\" viewBox=\"0 0 10 20\">"
                      "<rect x=\"0\" y=\"0\" width=\"10\" height=\"20\" fill=\"#0000dc\"/></svg>"));
    host.imagePath = imageDir.path();
}

void tst_Image::init()
{
    host.parameters.clear();
    setState(QStringLiteral("0"));
}

void tst_Image::drawing_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QRect>("drawn");

    QTest::newRow("wide bitmap, aspect kept") << "<Image>red.png</Image>" << red << QRect(0, 10, 40, 20);
    QTest::newRow("stretched") << "<Image>red.png</Image><Stretch>TRUE</Stretch>" << red << QRect(0, 0, 40, 40);
    QTest::newRow("tall svg, aspect kept") << "<Image>tall.svg</Image>" << blue << QRect(10, 0, 20, 40);
    QTest::newRow("svg stretched") << "<Image>tall.svg</Image><Stretch>true</Stretch>" << blue << QRect(0, 0, 40, 40);
    QTest::newRow("missing image draws nothing") << "<Image>none.png</Image>" << red << QRect();
}

void tst_Image::drawing()
{
    QFETCH(QString, xml);
    QFETCH(QColor, colour);
    QFETCH(QRect, drawn);

    Image *w = make(xml);
    QCOMPARE(w->isImageLoaded(), !drawn.isEmpty());
    QCOMPARE(w->imageRect(), drawn);
    const QImage image = render(w, panel);
    QCOMPARE(inkBox(image, colour), drawn);
    if (drawn.isEmpty())
        QCOMPARE(inkBox(image, panel), w->rect());

    // On a screen of twice the pixel density the same place is covered, in twice the pixels.
    RenderOptions dense(panel);
    dense.dpr = 2.0;
    QCOMPARE(inkBox(render(w, dense), colour), QRect(drawn.topLeft() * 2, drawn.size() * 2));
}

Image *tst_Image::variant(const QString &type, const QString &extra)
{
    return host.make<Image>(type, rect(40, 40) + extra);
}

void tst_Image::parameterImage_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("shown");

    const QString list = QStringLiteral("<Address prmAddr=\"Ch/State\"/><Image>grey.png</Image>"
                                        "<ImageList><Image>red.png</Image><Image>green.png</Image>"
                                        "<Image>blue.png</Image></ImageList>");
    QTest::newRow("step 0") << "ParameterImage" << list << "0" << "red.png";
    QTest::newRow("step 1") << "ParameterImage" << list << "0.5" << "green.png";
    QTest::newRow("rounds to the nearest step") << "ParameterImage" << list << "0.74" << "green.png";
    QTest::newRow("step 2") << "ParameterImage" << list << "1" << "blue.png";
    QTest::newRow("not a number shows Image") << "ParameterImage" << list << "off" << "grey.png";
    const QString ranged = QStringLiteral("<Address prmAddr=\"Ch/State\"/><Image>grey.png</Image>"
                                          "<ImageList range=\"4\"><Image>red.png</Image><Image>green.png</Image>"
                                          "<Image>blue.png</Image></ImageList>");
    QTest::newRow("range: step 2 of 4") << "ParameterImage" << ranged << "0.5" << "blue.png";
    QTest::newRow("range: a step past the list shows Image") << "ParameterImage" << ranged << "1" << "grey.png";
    const QString rangeTag = QStringLiteral("<Address prmAddr=\"Ch/State\"/><range>4</range>"
                                            "<ImageList><Image>red.png</Image><Image>green.png</Image></ImageList>");
    QTest::newRow("range tag: step 1 of 4") << "ParameterImage" << rangeTag << "0.25" << "green.png";
    QTest::newRow("range tag: nothing past the list") << "ParameterImage" << rangeTag << "0.75" << "";

    QTest::newRow("mic direction") << "MicDirection" << list << "1" << "blue.png";
    QTest::newRow("codec status") << "AudioCodecStatus" << list << "0.5" << "green.png";
    QTest::newRow("channel select")
        << "ChannelSelectParameterImage"
        << "<Address prmAddr=\"In{ChNum}/State\"/><ChNum>2</ChNum><ImageList><Image>red.png</Image>"
           "<Image>green.png</Image></ImageList>"
        << "1" << "green.png";
    QTest::newRow("speaker colour")
        << "SpeakerColorImage"
        << "<Address prmAddr=\"{BaseAddress}/State\"/><DEFAULT>Sp</DEFAULT><ImageList><Image>red.png</Image>"
           "<Image>green.png</Image></ImageList>"
        << "0" << "red.png";
}

void tst_Image::parameterImage()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(QString, shown);

    setState(val);
    Image *w = variant(type, xml);
    QVERIFY(w);
    QCOMPARE(w->metaObject()->className(), type.toLatin1().constData());
    QCOMPARE(w->currentImage(), shown);
    const QImage image = render(w, panel);
    const QHash<QString, QColor> colours{{"red.png", red}, {"green.png", green}, {"blue.png", blue},
                                         {"grey.png", grey}};
    if (shown.isEmpty())
        QCOMPARE(inkBox(image, panel), w->rect());
    else
        QCOMPARE(inkBox(image, colours.value(shown)), QRect(0, 10, 40, 20));
}

void tst_Image::imageChangesRepaintOnlyOnChange()
{
    auto *w = make<ParameterImage>("<Address prmAddr=\"Ch/State\"/><ImageList><Image>red.png</Image>"
                                   "<Image>green.png</Image></ImageList>");
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(w));
    QSignalSpy changed(w, &Image::currentImageChanged);

    setState(QStringLiteral("0.2")); // still step 0
    w->notifyValueChanged(state);
    w->setImageList(w->imageList());
    w->setStretched(false);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paintsNow(), 1);
    counter.clear();
    QCOMPARE(changed.count(), 0);

    setState(QStringLiteral("0.9"));
    w->notifyValueChanged(state);
    QTRY_VERIFY(counter.paints > 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toString(), QStringLiteral("green.png"));
    QCOMPARE(w->currentStep(), 1);
}

void tst_Image::greaterThan_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("thresholds");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("shown");

    const QString quarters = QStringLiteral("<Threshold>0.75, 0.25</Threshold>");
    for (const char *type : {"ChannelSelectParameterGreaterThanImage", "SpeakerParameterGreaterThanImage"}) {
        const QString t = QLatin1String(type);
        QTest::newRow(qPrintable(t + ": below every threshold")) << t << quarters << "0.1" << "red.png";
        QTest::newRow(qPrintable(t + ": equal is not greater")) << t << quarters << "0.25" << "red.png";
        QTest::newRow(qPrintable(t + ": above one")) << t << quarters << "0.5" << "green.png";
        QTest::newRow(qPrintable(t + ": above both")) << t << quarters << "0.8" << "blue.png";
        QTest::newRow(qPrintable(t + ": not a number")) << t << quarters << "n/a" << "";
    }
    const QString t = QStringLiteral("ChannelSelectParameterGreaterThanImage");
    QTest::newRow("thresholds in steps of range")
        << t << "<range>10</range><Threshold>3</Threshold><Threshold>6</Threshold>" << "0.5" << "green.png";
    QTest::newRow("steps above both") << t << "<range>10</range><Threshold>3,6</Threshold>" << "0.7" << "blue.png";
    QTest::newRow("no thresholds: the first image") << t << "" << "1" << "red.png";
}

void tst_Image::greaterThan()
{
    QFETCH(QString, type);
    QFETCH(QString, thresholds);
    QFETCH(QString, val);
    QFETCH(QString, shown);

    setState(val);
    const QString address = type.startsWith("Speaker") ? QStringLiteral("<Address prmAddr=\"{BaseAddress}/State\"/><DEFAULT>Sp</DEFAULT>")
                                                       : QStringLiteral("<Address prmAddr=\"In{ChNum}/State\"/><ChNum>2</ChNum>");
    Image *w = variant(type, address
                                 + "<ImageList><Image>red.png</Image><Image>green.png</Image><Image>blue.png</Image>"
                                   "</ImageList>"
                                 + thresholds);
    QVERIFY(w);
    QCOMPARE(w->currentImage(), shown);
    // The list may come after the thresholds, and values arrive later.
    setState(QStringLiteral("0.9"));
    w->notifyValueChanged({{"prmAddr", type.startsWith("Speaker") ? "Sp/State" : "In2/State"}, {"dev_uniq_id", "dev1"}});
    QCOMPARE(w->currentImage(), w->property("thresholds").toList().size() == 2 ? QStringLiteral("blue.png")
                                                                                : QStringLiteral("red.png"));
}

void tst_Image::imageStackerPages()
{
    setState(QStringLiteral("0.5"));
    auto *w = make<ImageStacker>("<Address prmAddr=\"Ch/State\"/><Image>red.png</Image><Image>green.png</Image>"
                                 "<Image>blue.png</Image>");
    QCOMPARE(w->imageList(), (QStringList{"red.png", "green.png", "blue.png"}));
    QCOMPARE(w->currentImage(), QStringLiteral("green.png"));
    QCOMPARE(inkBox(render(w, panel), green), QRect(0, 10, 40, 20));
    setState(QStringLiteral("1"));
    w->notifyValueChanged(state);
    QCOMPARE(w->currentImage(), QStringLiteral("blue.png"));
}

void tst_Image::selectFrame_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<int>("width");
    QTest::addColumn<QColor>("colour");

    QTest::newRow("on/off, on") << "<Value>1</Value>" << "1" << true << 2 << SelectFrame::defaultFrameColor;
    QTest::newRow("on/off, off") << "<Value>1</Value>" << "0" << false << 2 << SelectFrame::defaultFrameColor;
    QTest::newRow("value 0 while off") << "" << "0" << true << 2 << SelectFrame::defaultFrameColor;
    QTest::newRow("not a number selects nothing") << "" << "x" << false << 2 << SelectFrame::defaultFrameColor;
    QTest::newRow("step 2 of 4") << "<range>4</range><Value>2</Value>" << "0.5" << true << 2
                                 << SelectFrame::defaultFrameColor;
    QTest::newRow("step 1 of 4") << "<range>4</range><Value>2</Value>" << "0.25" << false << 2
                                 << SelectFrame::defaultFrameColor;
    QTest::newRow("styled") << "<Value>1</Value><FrameColor>0,255,255</FrameColor><FrameWidth>4</FrameWidth>"
                            << "1" << true << 4 << QColor(0, 255, 255);
}

void tst_Image::selectFrame()
{
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(bool, selected);
    QFETCH(int, width);
    QFETCH(QColor, colour);

    setState(val);
    auto *w = make<SelectFrame>("<Address prmAddr=\"Ch/State\"/>" + xml);
    QCOMPARE(w->isSelected(), selected);
    const QImage image = render(w, panel);
    // A band of the frame's width along every edge, nothing inside it.
    for (const QPoint p : {QPoint(0, 0), QPoint(width - 1, 20), QPoint(20, 39), QPoint(39, 39 - width + 1)})
        QCOMPARE(near(image.pixelColor(p), colour), selected);
    QVERIFY(near(image.pixelColor(width, 20), panel));
    QVERIFY(near(image.pixelColor(20, 20), panel));

    QSignalSpy spy(w, &SelectFrame::selectedChanged);
    setState(selected ? QStringLiteral("n/a") : val == "0.25" ? QStringLiteral("0.5") : QStringLiteral("1"));
    w->notifyValueChanged(state);
    if (xml.isEmpty() && !selected) // value 0: "1" is not selected either
        QCOMPARE(spy.count(), 0);
    else
        QCOMPARE(spy.count(), 1);
}

void tst_Image::parameterColor_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QColor>("fill");

    const QString colours = QStringLiteral("<ColorList><Color>220,0,0</Color><Color>0,200,0</Color>"
                                           "<Color>0,0,220</Color></ColorList>");
    QTest::newRow("first") << colours << "0" << red;
    QTest::newRow("middle") << colours << "0.5" << green;
    QTest::newRow("last") << colours << "1" << blue;
    QTest::newRow("not a number fills nothing") << colours << "x" << QColor();
    QTest::newRow("range past the list fills nothing") << "<range>4</range>" + colours << "1" << QColor();
    QTest::newRow("range step") << "<range>4</range>" + colours << "0.5" << blue;
    QTest::newRow("unreadable colour fills nothing")
        << "<ColorList><Color>red</Color><Color>0,200,0</Color></ColorList>" << "0" << QColor();
}

void tst_Image::parameterColor()
{
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(QColor, fill);

    setState(val);
    auto *w = make<ParameterColor>("<Address prmAddr=\"Ch/State\"/>" + xml);
    QCOMPARE(w->currentColor(), fill.isValid() ? fill : QColor(Qt::transparent));
    QCOMPARE(inkBox(render(w, panel), fill.isValid() ? fill : panel), w->rect());
}

void tst_Image::renderOptions_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("options");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QRect>("painted"); // in device-independent pixels
    QTest::addColumn<QColor>("colour");

    // A 4x2 red picture drawn into 10x10: in aspect it is a 10x5 band, on
    // whole pixels for a bitmap, from 2.5 to 7.5 for an SVG.
    const QColor full(255, 0, 0);
    const QColor darkened(175, 0, 0); // under a black veil at 80
    for (const char *format : {"png", "svg"}) {
        const QString f = QLatin1String(format);
        const QRect band = f == QLatin1String("png") ? QRect(0, 2, 10, 5) : QRect(0, 2, 10, 6);
        QTest::addRow("%s stretched", format) << f << int(ImageSource::Stretch) << 1.0 << QRect(0, 0, 10, 10) << full;
        QTest::addRow("%s in aspect, centred", format) << f << int(ImageSource::KeepAspect) << 1.0 << band << full;
        QTest::addRow("%s pressed", format) << f << int(ImageSource::Pressed) << 1.0 << QRect(0, 0, 10, 10) << darkened;
        QTest::addRow("%s in aspect and pressed", format) << f << int(ImageSource::KeepAspect | ImageSource::Pressed) << 1.0
                                                  << band << darkened;
        QTest::addRow("%s at twice the density", format) << f << int(ImageSource::KeepAspect) << 2.0 << band << full;
    }
}

void tst_Image::renderOptions()
{
    QFETCH(QString, format);
    QFETCH(int, options);
    QFETCH(qreal, ratio);
    QFETCH(QRect, painted);
    QFETCH(QColor, colour);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("wide.") + format);
    if (format == QLatin1String("svg")) {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"2\">"
                               "<rect width=\"4\" height=\"2\" fill=\"#ff0000\"/></svg>").toUtf8());
    } else {
        QImage img(4, 2, QImage::Format_RGB32);
        img.fill(QColor(255, 0, 0));
        QVERIFY(img.save(path));
    }
    ImageSource source(QStringLiteral("wide.") + format);
    const QPixmap pixmap = source.pixmap(QSize(10, 10), ratio, dir.path(), ImageSource::Options(options));
    QVERIFY(!pixmap.isNull());
    QCOMPARE(pixmap.devicePixelRatio(), ratio);
    QCOMPARE(pixmap.size(), QSize(10, 10) * ratio);

    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    const QRect inner(painted.topLeft() * ratio, painted.size() * ratio);
    // Inside: the colour, away from the antialiased rows at the band's edges.
    for (int y = inner.top() + int(ratio); y < inner.bottom() - int(ratio); ++y) {
        for (int x = inner.left(); x <= inner.right(); ++x)
            QCOMPARE(image.pixelColor(x, y), colour);
    }
    // Outside: nothing.
    for (int y = 0; y < image.height(); ++y) {
        if (y >= inner.top() - 1 && y <= inner.bottom() + 1)
            continue;
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixelColor(x, y).alpha(), 0);
    }
}

QTEST_MAIN(tst_Image)
#include "tst_image.moc"
