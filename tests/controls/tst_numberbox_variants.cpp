#include "ControlTestHost.h"

#include "controls/numberbox/numberbox_variants.h"
#include "data/AbstractDatabase.h"

#include <QtTest>

using Input::key;
using Input::mouse;

class tst_NumberBoxVariants : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    ConversionDatabase db;

    void reset()
    {
        host.reset();
    }
    void commit(NumberBox *b, const QString &text)
    {
        key(b, Qt::Key_Return);
        b->editor()->setText(text);
        key(b, Qt::Key_Return);
    }

private slots:
    void initTestCase() { setAbstractDatabase(&db); }
    void cleanupTestCase() { setAbstractDatabase(nullptr); }

    void delayCommit_data();
    void delayCommit();
    void delayShowsTheDelay();
    void bandWidth_data();
    void bandWidth();
    void beam_data();
    void beam();
    void directionWrapsAround();
    void displayOnlyBoxes_data();
    void displayOnlyBoxes();
    void gates_data();
    void gates();
    void addressing_data();
    void addressing();
    void tuningZoneTexts();
};

void tst_NumberBoxVariants::delayCommit_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("askedUnit");

    QTest::newRow("ms as typed") << "DelaySubTimeNumberBox" << "ms" << "" << "12.5" << "" << 1 << "12.5" << "";
    QTest::newRow("unknown unit is ms") << "DelaySubTimeNumberBox" << "msec" << "" << "3" << "" << 1 << "3" << "";
    QTest::newRow("metres converted") << "DelaySubTimeNumberBox" << "meter" << "" << "3.43" << "0.125" << 0
                                      << "0.125" << "meter";
    QTest::newRow("feet converted") << "DelaySubTimeNumberBox" << "feet" << "" << "10" << "0.5" << 0 << "0.5"
                                    << "feet";
    QTest::newRow("samples converted") << "DelaySubTimeNumberBox" << "sample" << "" << "480" << "0.0333333" << 0
                                       << "0.0333333" << "sample";
    QTest::newRow("refused conversion sends nothing")
        << "DelaySubTimeNumberBox" << "meter" << "" << "abc" << "" << -1 << "" << "meter";
    QTest::newRow("empty text sends nothing") << "DelaySubTimeNumberBox" << "ms" << "" << "" << "" << -1 << ""
                                              << "";
    QTest::newRow("frames are ms in a plain delay box")
        << "DelaySubTimeNumberBox" << "frame" << "" << "2" << "0.2" << 1 << "2" << "";
    QTest::newRow("frames converted with fixed scale")
        << "FixedScaleDelaySubTimeNumberBox" << "frame" << "" << "2" << "0.2" << 0 << "0.2" << "frame";
    QTest::newRow("fixed scale overrides the selector")
        << "FixedScaleDelaySubTimeNumberBox" << "ms" << "<FixedScale>feet</FixedScale>" << "1" << "0.01" << 0
        << "0.01" << "feet";
}

void tst_NumberBoxVariants::delayCommit()
{
    QFETCH(QString, type);
    QFETCH(QString, selector);
    QFETCH(QString, extra);
    QFETCH(QString, typed);
    QFETCH(QString, answer);
    QFETCH(int, kind);
    QFETCH(QString, sent);
    QFETCH(QString, askedUnit);

    reset();
    db.answer = answer;
    db.askedUnit.clear();
    host.setParameter(QStringLiteral("Ch/DelayUnit"), QStringLiteral("0"), selector);
    host.setParameter(QStringLiteral("Ch/Delay/Time"), QStringLiteral("0.1"), QStringLiteral("10.00ms"));
    const QString xml = QStringLiteral("<Address prmAddr=\"Ch/DelayUnit\"/>"
                                       "<Address prmAddr=\"Ch/Delay/Time\" cptName=\"Ch:1:1x1\"/>")
                        + extra;
    DelaySubTimeNumberBox *b = type == QLatin1String("DelaySubTimeNumberBox")
                                   ? host.make<DelaySubTimeNumberBox>(xml)
                                   : host.make<FixedScaleDelaySubTimeNumberBox>(xml);
    commit(b, typed);

    QCOMPARE(db.askedUnit, askedUnit);
    if (!askedUnit.isEmpty()) {
        QCOMPARE(db.askedText, typed);
        QCOMPARE(db.asked.value("prmAddr").toString(), QStringLiteral("Ch/Delay/Time"));
        QCOMPARE(db.asked.value("cptName").toString(), QStringLiteral("Ch:1:1x1"));
        QCOMPARE(db.asked.value("dev_model").toString(), QStringLiteral("Model1"));
        QCOMPARE(db.asked.value("dev_uniq_id").toString(), QStringLiteral("dev1"));
        QCOMPARE(db.asked.value("ui_prm_val").toString(), QStringLiteral("0.1"));
        QCOMPARE(db.asked.value("ui_prm_str").toString(), QStringLiteral("10.00ms"));
    }
    if (kind < 0) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    const ControlTestHost::Request &r = host.requests.at(0);
    QCOMPARE(r.kind, kind);
    QCOMPARE(r.index, 1);
    if (kind == 1) {
        QCOMPARE(r.arg("ui_prm_str"), sent);
    } else {
        QCOMPARE(r.arg("ui_prm_val"), sent);
        QCOMPARE(r.arg("set_prm_type"), QStringLiteral("0"));
    }
}

void tst_NumberBoxVariants::delayShowsTheDelay()
{
    reset();
    host.setParameter(QStringLiteral("Ch/DelayUnit"), QStringLiteral("0"), QStringLiteral("ms"));
    host.setParameter(QStringLiteral("Link:Ch/Delay/Time"), QStringLiteral("0.1"), QStringLiteral("10.00 ms"));
    auto *b = host.make<FixedScaleDelaySubTimeNumberBox>(
        QStringLiteral("<Address prmAddr=\"Ch/DelayUnit\"/><Address prmAddr=\"Link:Ch/Delay/Time\"/>"
                       "<SpaceDelete>true</SpaceDelete>"));
    QCOMPARE(b->shownText(), QStringLiteral("10.00ms"));
    QCOMPARE(b->unit(), QStringLiteral("ms"));

    key(b, Qt::Key_Up);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).index, 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_val"), QStringLiteral("0.1"));

    // A linked delay is converted against the delay it stands for, and set through the link.
    host.setParameter(QStringLiteral("Ch/DelayUnit"), QStringLiteral("0"), QStringLiteral("meter"));
    b->notifyValueChanged({{"prmAddr", "Ch/DelayUnit"}, {"dev_uniq_id", "dev1"}});
    db.answer = QStringLiteral("0.3");
    commit(b, QStringLiteral("1"));
    QCOMPARE(db.asked.value("prmAddr").toString(), QStringLiteral("Ch/Delay/Time"));
    QCOMPARE(host.requests.last().address.value("prmAddr").toString(), QStringLiteral("Link:Ch/Delay/Time"));
    QCOMPARE(host.requests.last().arg("ui_prm_val"), QStringLiteral("0.3"));
}

void tst_NumberBoxVariants::bandWidth_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("hide");
    QTest::addColumn<QString>("editorText");
    QTest::addColumn<bool>("visible");

    QTest::newRow("octaves open with the figure") << "B/W[Oct]" << "" << "0.33" << true;
    QTest::newRow("q opens with the text") << "Q" << "" << "0.33 oct" << true;
    QTest::newRow("unit is compared exactly") << "b/w[oct]" << "" << "0.33 oct" << true;
    QTest::newRow("hidden for a listed unit") << "Q" << "<range>1</range><HideValue>1</HideValue>" << "" << false;
    QTest::newRow("shown for another unit") << "B/W[Oct]" << "<range>1</range><HideValue>1</HideValue>" << "0.33"
                                            << true;
}

void tst_NumberBoxVariants::bandWidth()
{
    QFETCH(QString, unit);
    QFETCH(QString, hide);
    QFETCH(QString, editorText);
    QFETCH(bool, visible);

    reset();
    host.setParameter(QStringLiteral("Eq/Bw"), QStringLiteral("0.2"), QStringLiteral("0.33 oct"));
    host.setParameter(QStringLiteral("Eq/BwUnit"), unit == QLatin1String("Q") ? QStringLiteral("1") : QStringLiteral("0"),
                      unit);
    auto *b = host.make<BandWidthNumberBox>(
        QStringLiteral("<Address prmAddr=\"Eq/Bw\"/><Address prmAddr=\"Eq/BwUnit\"/>") + hide);
    if (!hide.isEmpty()) {
        QCOMPARE(b->isVisible(), visible);
        if (!visible)
            return;
    }
    key(b, Qt::Key_Return);
    QCOMPARE(b->editorText(), editorText);
    key(b, Qt::Key_Return);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).index, 0);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), editorText);
}

void tst_NumberBoxVariants::beam_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("up");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("committed");

    QTest::newRow("metres") << "BeamNumberBox" << "" << "2.3m" << "2.4" << "1.26" << "1.3";
    QTest::newRow("feet label only") << "BeamNumberBox" << "<Unit>Feet</Unit>" << "2.3ft" << "2.4" << "7"
                                     << "7.0";
    QTest::newRow("edges clamp") << "BeamNumberBox" << "<Left>0.5</Left><Right>2.3</Right>" << "2.3m" << "2.3"
                                 << "0.1" << "0.5";
    QTest::newRow("convert to feet") << "BeamConvertNumberBox" << "<Unit>Feet</Unit>" << "7.5ft" << "2.3"
                                     << "10" << "3.0";
    QTest::newRow("mode overrides unit") << "BeamConvertNumberBox" << "<Unit>Feet</Unit><Mode>Meter</Mode>"
                                         << "2.3m" << "2.4" << "1" << "1.0";
}

void tst_NumberBoxVariants::beam()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, shown);
    QFETCH(QString, up);
    QFETCH(QString, typed);
    QFETCH(QString, committed);

    reset();
    host.setParameter(QStringLiteral("Beam/X"), QStringLiteral("0.4"), QStringLiteral("2.30"));
    const QString all = QStringLiteral("<Address prmAddr=\"Beam/X\"/>") + xml;
    BeamNumberBox *b = type == QLatin1String("BeamNumberBox") ? host.make<BeamNumberBox>(all)
                                                              : host.make<BeamConvertNumberBox>(all);
    QCOMPARE(b->shownText(), shown);
    key(b, Qt::Key_Up);
    commit(b, typed);
    QCOMPARE(host.requests.size(), 2);
    QCOMPARE(host.requests.at(0).kind, 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), up);
    QCOMPARE(host.requests.at(1).arg("ui_prm_str"), committed);
}

void tst_NumberBoxVariants::directionWrapsAround()
{
    reset();
    host.setParameter(QStringLiteral("Mic/Dir"), QStringLiteral("0.99"), QStringLiteral("356"));
    auto *b = host.make<DirectionNumberBox>(QStringLiteral("<Address prmAddr=\"Mic/Dir\"/>"));
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 20));
    mouse(b, QEvent::MouseMove, QPoint(5, 10));
    mouse(b, QEvent::MouseButtonRelease, QPoint(5, 10));
    QCOMPARE(host.requests.size(), 2);
    QCOMPARE(host.requests.at(0).arg("ui_prm_val"), QStringLiteral("0.0233333"));
    QCOMPARE(host.requests.at(0).arg("set_prm_type"), QStringLiteral("1"));
    QCOMPARE(host.requests.at(1).arg("set_prm_type"), QStringLiteral("0"));
}

void tst_NumberBoxVariants::displayOnlyBoxes_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("shown");

    QTest::newRow("gc read-only") << "GcNumberBox" << "<ReadOnly>true</ReadOnly>" << "3" << "3";
    QTest::newRow("meter value") << "MeterValueNumberBox" << "" << "-20.0" << "-20.0";
    QTest::newRow("meter offline") << "MeterValueNumberBox" << "" << "" << "offline";
}

void tst_NumberBoxVariants::displayOnlyBoxes()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, str);
    QFETCH(QString, shown);

    reset();
    if (!str.isEmpty())
        host.setParameter(QStringLiteral("P"), QStringLiteral("0.5"), str);
    const QString all = QStringLiteral("<Address prmAddr=\"P\"/>") + xml;
    NumberBox *b = type == QLatin1String("GcNumberBox") ? static_cast<NumberBox *>(host.make<GcNumberBox>(all))
                                                        : host.make<MeterValueNumberBox>(all);
    QCOMPARE(b->shownText(), shown);
    key(b, Qt::Key_Return);
    key(b, Qt::Key_Up);
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 20));
    mouse(b, QEvent::MouseMove, QPoint(5, 10));
    mouse(b, QEvent::MouseButtonRelease, QPoint(5, 10));
    QVERIFY(!b->isEditing());
    QVERIFY(host.requests.isEmpty());
}

void tst_NumberBoxVariants::gates_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("hide: listed step") << "HideNumberBox" << "0.5" << false << true;
    QTest::newRow("hide: other step") << "HideNumberBox" << "1" << true << true;
    QTest::newRow("reject: listed step") << "RejectFocusNumberBox" << "0.5" << true << false;
    QTest::newRow("reject: other step") << "RejectFocusNumberBox" << "0" << true << true;
}

void tst_NumberBoxVariants::gates()
{
    QFETCH(QString, type);
    QFETCH(QString, val);
    QFETCH(bool, visible);
    QFETCH(bool, enabled);

    reset();
    host.setParameter(QStringLiteral("P"), val, QStringLiteral("x"));
    NumberBox *b;
    if (type == QLatin1String("HideNumberBox")) {
        b = host.make<HideNumberBox>(
            QStringLiteral("<Address prmAddr=\"P\"/><range>2</range><HideValue>1</HideValue>"));
    } else {
        b = host.make<RejectFocusNumberBox>(
            QStringLiteral("<Address prmAddr=\"P\"/><range>2</range><RejectValue>1</RejectValue>"));
        QCOMPARE(b->focusPolicy(), Qt::NoFocus);
    }
    QCOMPARE(b->isVisible(), visible);
    QCOMPARE(b->isEnabled(), enabled);
}

void tst_NumberBoxVariants::addressing_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("prmAddr");
    QTest::addColumn<QString>("zone");

    QTest::newRow("channel select") << "ChannelSelectNumberBox"
                                    << "<Address prmAddr=\"In/Ch{ChNum}/Gain\"/><ChNum>3</ChNum>"
                                    << "In/Ch3/Gain" << "";
    QTest::newRow("channel select delay")
        << "ChannelSelectDelaySubTimeNumberBox"
        << "<Address prmAddr=\"Ch/DelayUnit\"/><Address prmAddr=\"Out/Ch{ChNum}/Delay\"/><ChNum>2</ChNum>"
        << "Out/Ch2/Delay" << "";
    QTest::newRow("speaker") << "SpeakerNumberBox"
                             << "<Address prmAddr=\"{BaseAddress}/Y{indexY}/Gain\"/><DEFAULT>Spk</DEFAULT>"
                                "<AddressIndexY>4</AddressIndexY>"
                             << "Spk/Y4/Gain" << "";
    QTest::newRow("tuning zone") << "TuningZoneNumberBox" << "<Zone>z7</Zone><Address prmAddr=\"Zone/Gain\"/>"
                                 << "Zone/Gain" << "z7";
    QTest::newRow("matrix cell") << "MatrixMixerNumberBox"
                                 << "<AddressForm prmAddr=\"Mtx/X{x}/Y{y}\"/><XIndex>1</XIndex><YIndex>5</YIndex>"
                                 << "Mtx/X1/Y5" << "";
    QTest::newRow("vela matrix pan") << "VelaMatrixPanNumberBox"
                                     << "<AddressFormANC prmAddr=\"Pan/{x}\"/><XIndex>2</XIndex>" << "Pan/2" << "";
}

void tst_NumberBoxVariants::addressing()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, prmAddr);
    QFETCH(QString, zone);

    reset();
    host.setParameter(prmAddr, QStringLiteral("0.5"), QStringLiteral("v"));
    host.setParameter(QStringLiteral("Ch/DelayUnit"), QStringLiteral("0"), QStringLiteral("ms"));
    NumberBox *b = host.make<NumberBox>(type, xml);
    QVERIFY(b);
    QCOMPARE(b->shownText(), QStringLiteral("v"));
    key(b, Qt::Key_Down);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).address.value("prmAddr").toString(), prmAddr);
    QCOMPARE(host.requests.at(0).address.value("zone_uniq_id").toString(), zone);
    QCOMPARE(host.requests.at(0).arg("ui_prm_step"), QStringLiteral("-1"));
}

void tst_NumberBoxVariants::tuningZoneTexts()
{
    reset();
    host.setParameter(QStringLiteral("Bw"), QStringLiteral("0.5"), QStringLiteral("0.333 oct"));
    auto *bw = host.make<TuningZoneBandWidthNumberBox>(QStringLiteral("<Zone>z</Zone><Address prmAddr=\"Bw\"/>"));
    QCOMPARE(bw->shownText(), QStringLiteral("0.3 oct"));

    host.setParameter(QStringLiteral("Unit"), QStringLiteral("0"), QStringLiteral("meter"));
    host.setParameter(QStringLiteral("Dly"), QStringLiteral("0.5"), QStringLiteral("3.4"));
    auto *delay = host.make<TuningZoneMasterDelaySubTimeNumberBox>(
        QStringLiteral("<Zone>z</Zone><Address prmAddr=\"Unit\"/><Address prmAddr=\"Dly\"/>"));
    QCOMPARE(delay->shownText(), QStringLiteral("3.40 meter"));

    host.setParameter(QStringLiteral("Master"), QStringLiteral("0.25"), QString());
    auto *master = host.make<TuningZoneMasterNumberBox>(
        QStringLiteral("<Zone>z</Zone><Address prmAddr=\"Master\"/><MinValue>-20</MinValue>"
                       "<MaxValue>20</MaxValue><Step>0.5</Step><Unit>dB</Unit><MasterType>Gain</MasterType>"));
    QCOMPARE(master->shownText(), QStringLiteral("-10.0 dB"));
    QCOMPARE(master->property("masterType").toString(), QStringLiteral("Gain"));
}

QTEST_MAIN(tst_NumberBoxVariants)
#include "tst_numberbox_variants.moc"
