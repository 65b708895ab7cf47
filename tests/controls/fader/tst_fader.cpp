#include "controls/ControlTestHost.h"

#include "controls/fader/Fader.h"
#include "controls/fader/fader_variants.h"
#include "data/AbstractDatabase.h"

#include <QMenu>
#include <QTemporaryDir>
#include <QtTest>
#include "support/Gesture.h"
#include "support/PaintRecorder.h"
#include "support/Render.h"

using Input::key;
using Input::mouse;

namespace {

// Rows of the image that hold \a colour somewhere in column range [x0, x1].
QList<int> rowsWith(const QImage &image, const QColor &colour, int x0, int x1)
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = x0; x <= x1; ++x) {
            if (image.pixelColor(x, y) == colour) {
                rows << y;
                break;
            }
        }
    }
    return rows;
}

const QVariantMap faderParameter{{"prmAddr", "Ch1/Fader"}, {"dev_uniq_id", "dev1"}};

} // namespace

class tst_Fader : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    // A fader \a length pixels along its rail with a 20 x 10 knob, so that the travel is length - 10.
    Fader *fader(const QString &val, const QString &extra = QString(), const QString &type = QStringLiteral("Fader"),
                 int length = 160)
    {
        host.reset();
        host.setParameter(QStringLiteral("Ch1/Fader"), val, QStringLiteral("f"));
        const bool horizontal = type == QLatin1String("HorizontalFader");
        const QString rect = horizontal
                                 ? QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"%1\" height=\"30\"/>"
                                                  "<KnobSize width=\"10\" height=\"20\"/>")
                                 : QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"30\" height=\"%1\"/>"
                                                  "<KnobSize width=\"20\" height=\"10\"/>");
        const QString xml = rect.arg(length) + QStringLiteral("<Address prmAddr=\"Ch1/Fader\"/>") + extra;
        QString bind = xml;
        if (type == QLatin1String("TuningZoneFader"))
            bind = QStringLiteral("<Zone>z1</Zone>") + xml;
        else if (type == QLatin1String("ChannelSelectFader"))
            bind = QString(xml).replace("Ch1/Fader", "Ch{ChNum}/Fader") + "<ChNum>1</ChNum>";
        Fader *f = host.make<Fader>(type, bind);
        if (!f)
            qFatal("%s is no fader type", qPrintable(type));
        f->setFocus();
        return f;
    }

    QStringList sent() const { return Gestures::described(host, Gestures::describeFor(QStringLiteral("Ch1/Fader"))); }

private slots:
    void levelScalePointer_data();
    void levelScalePointer();
    void description_data();
    void description();
    void scaledLaw();
    void drag_data();
    void drag();
    void lawInverse_data();
    void lawInverse();
    void knobFollowsTheValue_data();
    void knobFollowsTheValue();
    void keys_data();
    void keys();
    void wheel_data();
    void wheel();
    void levelMenu();
    void valueRepaintsOnlyWhenTheKnobMoves();
    void paint_data();
    void paint();
    void knobImage();
    void markAtValueText();
};

void tst_Fader::description_data()
{
    QTest::addColumn<float>("zoom");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("normal by default") << 1.0f << "" << "scaleKind" << QVariant::fromValue(Fader::Normal);
    QTest::newRow("0dB") << 1.0f << "<ParameterType>0dB</ParameterType>" << "scaleKind"
                         << QVariant::fromValue(Fader::ZeroDbLaw);
    QTest::newRow("10dB") << 1.0f << "<ParameterType>10dB</ParameterType>" << "scaleKind"
                          << QVariant::fromValue(Fader::TenDbLaw);
    QTest::newRow("unknown type leaves it") << 1.0f << "<ParameterType>10dB</ParameterType><ParameterType>0db"
                                                       "</ParameterType>"
                                            << "scaleKind" << QVariant::fromValue(Fader::TenDbLaw);
    QTest::newRow("black rail") << 1.0f << "" << "railColor" << QVariant(QColor(0, 0, 0, 255));
    QTest::newRow("rail colour") << 1.0f << "<RailColor>9,8,7</RailColor>" << "railColor"
                                 << QVariant(QColor(9, 8, 7));
    QTest::newRow("fill level") << 1.0f << "<FillLevel>true</FillLevel>" << "fillLevel" << QVariant(true);
    QTest::newRow("fill level needs exact true") << 1.0f << "<FillLevel>True</FillLevel>" << "fillLevel"
                                                 << QVariant(false);
    QTest::newRow("knob image") << 1.0f << "<Image type=\"knob\">k.svg</Image>" << "knobImage" << QVariant("k.svg");
    QTest::newRow("base image") << 1.0f << "<Image type=\"base\">b.png</Image>" << "baseImage" << QVariant("b.png");
    QTest::newRow("index image is no fader image") << 1.0f << "<Image type=\"index\">i.svg</Image>" << "knobImage"
                                                   << QVariant("");
    QTest::newRow("rail rect") << 1.5f << "<RailRect x=\"3\" y=\"5\" width=\"3\" height=\"101\"/>" << "railRect"
                               << QVariant(QRect(4, 7, 4, 151));
    // Knob 20 x 10 at 1.5 is 30 x 15; x from the description, y from the value 0.
    QTest::newRow("knob size and position, zoomed")
        << 1.5f << "<KnobPosition x=\"3\" y=\"7\"/>" << "knobRect" << QVariant(QRect(4, 240 - 15, 30, 15));
    QTest::newRow("knob position as text") << 1.0f << "<KnobPosition>5,0</KnobPosition>" << "knobRect"
                                           << QVariant(QRect(5, 150, 20, 10));
    QTest::newRow("centred without a position") << 1.0f << "" << "knobRect" << QVariant(QRect(5, 150, 20, 10));
}

void tst_Fader::description()
{
    QFETCH(float, zoom);
    QFETCH(QString, xml);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);

    host.zoom = zoom;
    Fader *f = fader(QStringLiteral("0"), xml);
    QVariant actual = f->property(property.toLatin1().constData());
    host.zoom = 1.0f;
    if (property == QLatin1String("scaleKind"))
        actual = QVariant::fromValue(Fader::ScaleKind(actual.toInt()));
    QCOMPARE(actual, expected);
    for (const char *tag : {"Image", "ParameterType", "LevelList", "RailRect", "KnobPosition", "FillLevel",
                            "KnobSize", "RailColor"})
        QVERIFY2(f->handledTags().contains(QLatin1String(tag)), tag);
}

void tst_Fader::scaledLaw()
{
    QList<int> pixels;
    for (const auto &point : Fader::law(Fader::ZeroDbLaw, 1.5f))
        pixels << point.first;
    QCOMPARE(pixels, (QList<int>{0, 12, 24, 36, 63, 90, 117, 144, 171, 198}));
    pixels.clear();
    for (const auto &point : Fader::law(Fader::TenDbLaw, 0.7f))
        pixels << point.first;
    // Truncated, not rounded: 8 x 0.7 is 5.6.
    QCOMPARE(pixels, (QList<int>{0, 5, 11, 16, 28, 39, 50, 61, 72, 84, 95}));
    QVERIFY(Fader::law(Fader::Normal, 1.0f).isEmpty());
}

void tst_Fader::drag_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("length");
    QTest::addColumn<Gesture>("gesture");

    using namespace Step;
    // Vertical: a 160-pixel fader with a 10-pixel knob travels 150; the knob of value 0 spans y 150 to 159.
    const QString zeroDb = QStringLiteral("<ParameterType>0dB</ParameterType>");
    const QString tenDb = QStringLiteral("<ParameterType>10dB</ParameterType>");
    QTest::newRow("click on the knob sends nothing") << "Fader" << "" << 160
                                                     << Gesture{press(15, 155), release(15, 155)};
    QTest::newRow("press beside the knob does nothing")
        << "Fader" << "" << 160 << Gesture{press(15, 100), move(15, 50), release(15, 50)};
    QTest::newRow("normal, 30 up") << "Fader" << "" << 160
                                   << Gesture{press(15, 155), move(15, 125, {"pos 0.2 1"}),
                                              release(15, 125, {"pos 0.2 0"})};
    QTest::newRow("the grab point stays under the mouse")
        << "Fader" << "" << 160 << Gesture{press(15, 159), move(15, 144, {"pos 0.1 1"})};
    QTest::newRow("above the top is 1") << "Fader" << "" << 160 << Gesture{press(15, 150), move(15, -90, {"pos 1 1"})};
    QTest::newRow("below the bottom is 0") << "Fader" << "" << 160
                                           << Gesture{press(15, 152), move(15, 100, {"pos 0.346667 1"}),
                                                      release(15, 400, {"pos 0 0"})};
    QTest::newRow("no travel sends 0") << "Fader" << "" << 10 << Gesture{press(15, 5), move(15, -50, {"pos 0 1"})};
    QTest::newRow("0dB at 42") << "Fader" << zeroDb << 160 << Gesture{press(15, 150),
                                                                      move(15, 108, {"pos 0.315738 1"})};
    QTest::newRow("0dB mid segment") << "Fader" << zeroDb << 160 << Gesture{press(15, 150),
                                                                            move(15, 99, {"pos 0.364614 1"})};
    QTest::newRow("10dB at 88") << "Fader" << tenDb << 160 << Gesture{press(15, 150), move(15, 62, {"pos 0.706745 1"})};
    QTest::newRow("0dB past its last pixel is 1") << "Fader" << zeroDb << 160
                                                  << Gesture{press(15, 150), move(15, 10, {"pos 1 1"})};
    QTest::newRow("0dB short travel tops out below 1")
        << "Fader" << zeroDb << 70 << Gesture{press(15, 60), move(15, -100, {"pos 0.41349 1"})};
    QTest::newRow("alt-click asks for the default")
        << "Fader" << "" << 160 << Gesture{press(15, 155, {"kind 3"}).with(Qt::AltModifier), move(15, 100),
                                           release(15, 100)};
    QTest::newRow("alt wins over control")
        << "Fader" << "" << 160 << Gesture{press(15, 155, {"kind 3"}).with(Qt::AltModifier | Qt::ControlModifier)};
    QTest::newRow("alt-click beside the knob too") << "Fader" << "" << 160
                                                   << Gesture{press(15, 20, {"kind 3"}).with(Qt::AltModifier)};
    QTest::newRow("control-click goes to the core")
        << "Fader" << "" << 160
        << Gesture{press(15, 155).with(Qt::ControlModifier), move(15, 100), release(15, 100).with(Qt::ControlModifier)};
    QTest::newRow("a modifier ends the drag")
        << "Fader" << "" << 160
        << Gesture{press(15, 155), move(15, 140, {"pos 0.1 1"}), move(15, 100).with(Qt::ShiftModifier), move(15, 90),
                   release(15, 90)};
    QTest::newRow("tuning zone") << "TuningZoneFader" << "" << 160 << Gesture{press(15, 155),
                                                                              move(15, 140, {"pos 0.1 1"})};
    QTest::newRow("channel select") << "ChannelSelectFader" << zeroDb << 160
                                    << Gesture{press(15, 155), move(15, 113, {"pos 0.315738 1"}),
                                               release(15, 113, {"pos 0.315738 0"})};
    // Horizontal: 160 wide with a 10-pixel knob; value 0 puts the knob at x 0 to 9; left is 0.
    QTest::newRow("horizontal, 30 right") << "HorizontalFader" << "" << 160
                                          << Gesture{press(5, 15), move(35, 15, {"pos 0.2 1"}),
                                                     release(35, 90, {"pos 0.2 0"})};
    QTest::newRow("horizontal ignores vertical movement")
        << "HorizontalFader" << "" << 160 << Gesture{press(5, 15), move(5, -50, {"pos 0 1"})};
    QTest::newRow("horizontal 0dB") << "HorizontalFader" << zeroDb << 160
                                    << Gesture{press(0, 15), move(51, 15, {"pos 0.364614 1"})};
    QTest::newRow("horizontal press beside the knob") << "HorizontalFader" << "" << 160
                                                      << Gesture{press(50, 15), move(90, 15)};
}

void tst_Fader::drag()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(int, length);
    QFETCH(Gesture, gesture);

    Fader *f = fader(QStringLiteral("0"), xml, type, length);
    const QRect before = f->knobRect();
    const Gestures::Result r = Gestures::play(f, host, gesture, Gestures::describeFor(QStringLiteral("Ch1/Fader")));
    QCOMPARE(r.sent, r.expected);
    if (r.expected.isEmpty())
        QCOMPARE(f->knobRect(), before);
}

void tst_Fader::lawInverse_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<float>("zoom");

    for (float zoom : {1.0f, 1.5f, 0.8f}) {
        QTest::addRow("normal at %g", zoom) << int(Fader::Normal) << zoom;
        QTest::addRow("0dB at %g", zoom) << int(Fader::ZeroDbLaw) << zoom;
        QTest::addRow("10dB at %g", zoom) << int(Fader::TenDbLaw) << zoom;
    }
}

void tst_Fader::lawInverse()
{
    QFETCH(int, kind);
    QFETCH(float, zoom);

    host.zoom = zoom;
    Fader *f = fader(QStringLiteral("0"), QString(), QStringLiteral("Fader"), 260);
    // Geometry and laws follow the host's zoom as it is now.
    auto restore = qScopeGuard([this] { host.zoom = 1.0f; });
    f->setScaleKind(Fader::ScaleKind(kind));
    const auto law = Fader::law(kind, zoom);
    const int top = law.isEmpty() ? f->travel() : qMin(f->travel(), law.last().first);
    QVERIFY(top > 100);
    double previous = -1;
    for (int p = 0; p <= top; ++p) {
        // What a drag sends, read back as the database would echo it, puts the knob where it was.
        const double ratio = QString::number(f->knobPositionToRatio(p), 'g', 6).toDouble();
        QVERIFY2(ratio > previous, qPrintable(QString::number(p)));
        previous = ratio;
        QCOMPARE(f->ratioToKnobPosition(ratio), p);
    }
    QCOMPARE(f->knobPositionToRatio(top), top == f->travel() && law.isEmpty() ? 1.0 : law.last().second);
}

void tst_Fader::knobFollowsTheValue_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<int>("position");

    QTest::newRow("normal") << "Fader" << "" << "0.2" << 30;
    QTest::newRow("top") << "Fader" << "" << "1" << 150;
    QTest::newRow("above 1 stays at the top") << "Fader" << "" << "3" << 150;
    QTest::newRow("not a number is the bottom") << "Fader" << "" << "x" << 0;
    QTest::newRow("0dB point") << "Fader" << "<ParameterType>0dB</ParameterType>" << "0.315738" << 42;
    QTest::newRow("0dB between points") << "Fader" << "<ParameterType>0dB</ParameterType>" << "0.364614" << 51;
    QTest::newRow("0dB unity at its last pixel") << "Fader" << "<ParameterType>0dB</ParameterType>" << "1" << 132;
    QTest::newRow("10dB") << "Fader" << "<ParameterType>10dB</ParameterType>" << "0.755621" << 96;
    QTest::newRow("horizontal") << "HorizontalFader" << "" << "0.5" << 75;
}

void tst_Fader::knobFollowsTheValue()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(int, position);

    Fader *f = fader(QStringLiteral("0"), xml, type);
    QCOMPARE(f->knobPosition(), 0);
    host.setParameter(QStringLiteral("Ch1/Fader"), val, QStringLiteral("v"));
    f->notifyValueChanged(faderParameter);
    QCOMPARE(f->knobPosition(), position);
    const QRect knob = f->knobRect();
    if (type == QLatin1String("HorizontalFader"))
        QCOMPARE(knob.left(), position);
    else
        QCOMPARE(knob.top(), f->travel() - position);

    // While the knob is held it stays under the mouse, and settles on the value at release.
    const QPoint grip = knob.center();
    mouse(f, QEvent::MouseButtonPress, grip);
    const int toward = position > f->travel() / 2 ? -3 : 3; // away from the end it sits at
    const QPoint away = type == QLatin1String("HorizontalFader") ? grip + QPoint(toward, 0) : grip - QPoint(0, toward);
    mouse(f, QEvent::MouseMove, away);
    f->notifyValueChanged({{"prmAddr", "Ch1/Fader"}, {"dev_uniq_id", "dev1"}, {"ui_prm_val", "0"}});
    QCOMPARE(f->knobRect().center(), away);
    mouse(f, QEvent::MouseButtonRelease, away);
    QCOMPARE(f->knobPosition(), 0);
}

void tst_Fader::keys_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("up") << "Fader" << int(Qt::Key_Up) << true << QStringList{"step 1 0.3"};
    QTest::newRow("down") << "GeqFader" << int(Qt::Key_Down) << true << QStringList{"step -1 0.3"};
    QTest::newRow("right passes on") << "Fader" << int(Qt::Key_Right) << true << QStringList();
    QTest::newRow("return passes on") << "Fader" << int(Qt::Key_Return) << true << QStringList();
    QTest::newRow("hidden ignores up") << "Fader" << int(Qt::Key_Up) << false << QStringList();
    QTest::newRow("horizontal up") << "HorizontalFader" << int(Qt::Key_Up) << true << QStringList{"step 1 0.3"};
    QTest::newRow("horizontal right") << "HorizontalFader" << int(Qt::Key_Right) << true << QStringList{"step 1 0.3"};
    QTest::newRow("horizontal left") << "HorizontalFader" << int(Qt::Key_Left) << true << QStringList{"step -1 0.3"};
}

void tst_Fader::keys()
{
    QFETCH(QString, type);
    QFETCH(int, key);
    QFETCH(bool, visible);
    QFETCH(QStringList, expected);

    Fader *f = fader(QStringLiteral("0.3"), QString(), type);
    f->setVisible(visible);
    QCOMPARE(Input::key(f, key), !expected.isEmpty());
    QCOMPARE(sent(), expected);

    host.requests.clear();
    Input::wheel(f, -120);
    QCOMPARE(sent(), QStringList{"step -1 0.3"});
}

void tst_Fader::wheel_data()
{
    QTest::addColumn<Gesture>("gesture");
    Gestures::addWheelNotchRows(QPoint(15, 80), QStringLiteral("0.3"));
}

void tst_Fader::wheel()
{
    QFETCH(Gesture, gesture);

    const Gestures::Result r = Gestures::play(fader(QStringLiteral("0.3")), host, gesture,
                                              Gestures::describeFor(QStringLiteral("Ch1/Fader")));
    QCOMPARE(r.sent, r.expected);
    QCOMPARE(r.ignored, QStringList());
}

void tst_Fader::levelMenu()
{
    Fader *f = fader(QStringLiteral("0.3"), QStringLiteral("<LevelList><Level text=\"0 dB\">0.0</Level>"
                                                           "<Level text=\"-10 dB\" position=\"0.5\">-10.0</Level>"
                                                           "</LevelList>"));
    QCOMPARE(f->levels(), (QStringList{"0 dB:0.0", "-10 dB:-10.0"}));
    std::unique_ptr<QMenu> menu(f->createContextMenu());
    QVERIFY(menu);
    const QList<QAction *> actions = menu->actions();
    QCOMPARE(actions.size(), 8);
    QVERIFY(actions.at(5)->isSeparator());
    QCOMPARE(actions.at(7)->text(), QStringLiteral("-10 dB"));
    actions.at(7)->trigger();
    QCOMPARE(sent(), QStringList{"text -10.0"});
    QVERIFY(host.actions.isEmpty());
}

void tst_Fader::valueRepaintsOnlyWhenTheKnobMoves()
{
    Fader *f = fader(QStringLiteral("0.5"));
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(f));
    host.setParameter(QStringLiteral("Ch1/Fader"), QStringLiteral("0.5"), QStringLiteral("changed text"));
    f->notifyValueChanged(faderParameter);
    // Less than half a pixel of travel: the knob stays where it is.
    host.setParameter(QStringLiteral("Ch1/Fader"), QStringLiteral("0.501"), QStringLiteral("changed text"));
    f->notifyValueChanged(faderParameter);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paintsNow(), 1);
    counter.clear();
    host.setParameter(QStringLiteral("Ch1/Fader"), QStringLiteral("0.6"), QStringLiteral("x"));
    f->notifyValueChanged(faderParameter);
    QTRY_VERIFY(counter.paints > 0);
}

void tst_Fader::paint_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<bool>("filled");

    const QString rail = QStringLiteral("<RailColor>255,0,0</RailColor>");
    QTest::newRow("rail") << "Fader" << rail << false;
    QTest::newRow("fill level") << "Fader" << rail + "<FillLevel>true</FillLevel>" << true;
    QTest::newRow("rail rect") << "Fader" << rail + "<RailRect x=\"2\" y=\"4\" width=\"3\" height=\"150\"/>" << false;
    QTest::newRow("horizontal fill") << "HorizontalFader" << rail + "<FillLevel>true</FillLevel>" << true;
}

void tst_Fader::paint()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(bool, filled);

    Fader *f = fader(QStringLiteral("0.4"), xml, type);
    const bool vertical = f->orientation() == Qt::Vertical;
    const QImage image = render(f, QColor(1, 2, 3));
    const QRect knob = f->knobRect();
    const QRect rail = f->railRect();
    const QColor red(255, 0, 0), fill = f->fillColor(), line(245, 245, 245);

    // The cap's centre line marks the knob's centre.
    if (vertical) {
        const QList<int> rows = rowsWith(image, line, knob.left(), knob.right());
        QVERIFY(!rows.isEmpty());
        QVERIFY2(qAbs(rows.first() - knob.center().y()) <= 1, qPrintable(QString::number(rows.first())));
    } else {
        QCOMPARE(image.pixelColor(knob.center().x(), knob.top() + 3), line);
    }
    // Beyond the knob: rail on the far side, rail or fill on the near side.
    const QPoint nearSide = vertical ? QPoint(rail.center().x(), knob.bottom() + 5)
                                     : QPoint(knob.left() - 5, rail.center().y());
    const QPoint farSide = vertical ? QPoint(rail.center().x(), knob.top() - 5)
                                    : QPoint(knob.right() + 5, rail.center().y());
    QCOMPARE(image.pixelColor(farSide), red);
    QCOMPARE(image.pixelColor(nearSide), filled ? fill : red);
    // Nothing of the rail outside it.
    QCOMPARE(image.pixelColor(vertical ? QPoint(rail.right() + 2, 2) : QPoint(2, rail.bottom() + 2)),
             QColor(1, 2, 3));
}

void tst_Fader::knobImage()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QImage png(8, 4, QImage::Format_ARGB32);
    png.fill(QColor(0, 0, 255));
    QVERIFY(png.save(dir.filePath(QStringLiteral("cap.png"))));
    host.imagePath = dir.path();
    Fader *f = fader(QStringLiteral("0.5"),
                     QStringLiteral("<Image type=\"knob\">cap.png</Image>"
                                    "<LevelList><Level text=\"Unity\" position=\"0.8\">0</Level>"
                                    "<Level text=\"Off\">-inf</Level></LevelList>"));
    const QImage image = render(f, QColor(1, 2, 3));
    host.imagePath.clear();
    const QRect knob = f->knobRect();
    QCOMPARE(image.pixelColor(knob.topLeft()), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(knob.bottomRight()), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(knob.center()), QColor(0, 0, 255));

    // One mark, level with where the knob would sit for its position; the level without one has none.
    const int markY = f->travel() - f->ratioToKnobPosition(0.8) + knob.height() / 2;
    const QList<int> rows = rowsWith(image, QColor(200, 200, 200), 0, knob.left() - 1);
    QCOMPARE(rows, QList<int>{markY});
}

void tst_Fader::levelScalePointer_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<double>("height"); // of the tip, as a share of the travel from the bottom

    QTest::newRow("bottom") << "0" << 0.0;
    QTest::newRow("middle") << "0.5" << 0.5;
    QTest::newRow("top") << "1" << 1.0;
}

void tst_Fader::levelScalePointer()
{
    QFETCH(QString, val);
    QFETCH(double, height);
    host.window.reset();
    host.requests.clear();
    host.setParameter(QStringLiteral("Ch1/Fader"), val, QStringLiteral("x"));
    auto *w = host.make<LevelScalePointer>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"30\" height=\"200\"/>"
                                                          "<Address prmAddr=\"Ch1/Fader\"/>"
                                                          "<PointerColor>0,255,0</PointerColor>"));
    QCOMPARE(w->pointerColor(), QColor(0, 255, 0));
    const QPoint tip = w->tip();
    QCOMPARE(tip.y(), w->knobRect().center().y());
    // The pointer at its level, and no knob cap: nothing but the pointer's green on its row.
    QImage image(w->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    w->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(image.pixelColor(w->width() - 2, tip.y()), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(2, tip.y()), QColor(0, 255, 0)); // the line across
    const QRect knob = w->knobRect();
    const int away = tip.y() + (tip.y() < 100 ? 15 : -15);
    QCOMPARE(image.pixelColor(knob.center().x(), away), QColor(Qt::black));
    // Higher levels sit higher.
    const int travelTop = w->knobRect().height() / 2;
    const int travelBottom = w->height() - 1 - w->knobRect().height() / 2;
    QVERIFY(qAbs(tip.y() - (travelBottom - height * (travelBottom - travelTop))) <= 2);

    // It drags as a fader does.
    Input::mouse(w, QEvent::MouseButtonPress, tip);
    Input::mouse(w, QEvent::MouseMove, tip - QPoint(0, 10));
    Input::mouse(w, QEvent::MouseButtonRelease, tip - QPoint(0, 10));
    QVERIFY(!host.requests.isEmpty() || val == QLatin1String("1"));
}

void tst_Fader::markAtValueText()
{
    // A level given by a value text is marked where the database puts that text.
    ConversionDatabase db;
    db.positions.insert(QStringLiteral("0 dB"), QStringLiteral("0.84375"));
    setAbstractDatabase(&db);
    Fader *f = fader(QStringLiteral("0.2"), QStringLiteral("<LevelList><Level text=\"0 dB\" at=\"0 dB\">0</Level>"
                                                           "<Level text=\"Odd\" at=\"loud\">99</Level></LevelList>"));
    QImage image = render(f, QColor(1, 2, 3));
    image = render(f, QColor(1, 2, 3)); // asked once, not on every paint
    setAbstractDatabase(nullptr);
    QCOMPARE(db.askedTexts, (QStringList{"0 dB", "loud"}));
    QCOMPARE(db.asked.value(QStringLiteral("prmAddr")).toString(), QString("Ch1/Fader"));
    const QRect knob = f->knobRect();
    const int markY = f->travel() - f->ratioToKnobPosition(0.84375) + knob.height() / 2;
    QCOMPARE(rowsWith(image, QColor(200, 200, 200), 0, knob.left() - 1), QList<int>{markY});
    QCOMPARE(f->levelList().at(0).position, 0.84375);
    QVERIFY(!f->levelList().at(1).hasPosition());
}

QTEST_MAIN(tst_Fader)
#include "tst_fader.moc"
