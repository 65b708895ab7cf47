#include "controls/ControlTestHost.h"

#include "accessibility/AccessibleControl.h"
#include "core/BaseWidget.h"
#include "core/FocusRing.h"
#include "plugin/WidgetFactory.h"

#include <QAccessible>
#include <QImage>

class tst_Accessibility : public QObject
{
    Q_OBJECT

private:
    BaseWidget *build(const QString &type, const QString &xml)
    {
        host.window.reset(new QWidget);
        host.window->resize(400, 300);
        WidgetFactory factory;
        IWidgetCore *core = factory.create(type, host.window.get(), &host, &host.registry);
        auto *w = dynamic_cast<BaseWidget *>(core);
        if (!w)
            return nullptr;
        QDomDocument doc;
        doc.setContent(QStringLiteral("<Widget>%1</Widget>").arg(xml));
        w->configure(doc.documentElement());
        host.registry.commitAll();
        host.window->show();
        QApplication::setActiveWindow(host.window.get());
        (void)QTest::qWaitForWindowActive(host.window.get());
        return w;
    }

    ControlTestHost host;

private slots:
    void init()
    {
        host.requests.clear();
        host.setParameter(QStringLiteral("Ch1/Fader"), QStringLiteral("0.25"), QStringLiteral("-6.0 dB"));
        host.setParameter(QStringLiteral("Ch1/Mute"), QStringLiteral("1"), QStringLiteral("On"));
        host.setParameter(QStringLiteral("Ch1/Input"), QStringLiteral("0"), QStringLiteral("Mic 1"));
    }

    void familyInterface_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("xml");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("hasPosition");

        const QString fader = QStringLiteral("<Rect x='0' y='0' width='40' height='120'/>"
                                             "<Address prmAddr='Ch1/Fader'/>");
        const QString mute = QStringLiteral("<Rect x='0' y='0' width='60' height='20'/><Address prmAddr='Ch1/Mute'/>");
        QTest::newRow("fader") << "Fader" << fader << int(QAccessible::Slider) << "Ch 1 Fader" << "-6.0 dB" << true;
        QTest::newRow("dial") << "Dial" << fader << int(QAccessible::Dial) << "Ch 1 Fader" << "-6.0 dB" << true;
        QTest::newRow("number box") << "NumberBox" << fader << int(QAccessible::SpinBox) << "Ch 1 Fader"
                                    << "-6.0 dB" << true;
        QTest::newRow("meter") << "Meter" << fader << int(QAccessible::ProgressBar) << "Ch 1 Fader" << "-6.0 dB"
                               << true;
        QTest::newRow("toggle") << "Button" << mute << int(QAccessible::CheckBox) << "Ch 1 Mute" << "On" << false;
        QTest::newRow("labelled toggle") << "Button" << mute + "<Text>Mute</Text>" << int(QAccessible::CheckBox)
                                         << "Mute" << "On" << false;
        QTest::newRow("select") << "SelectButton" << mute + "<Value>1,2</Value>" << int(QAccessible::RadioButton)
                                << "Ch 1 Mute" << "On" << false;
        QTest::newRow("push") << "ResetButton" << mute + "<Text>Reset</Text>" << int(QAccessible::Button)
                              << "Reset" << "" << false;
        QTest::newRow("replacement name") << "Dial" << fader + "<ReplaceParameterName>Level</ReplaceParameterName>"
                                          << int(QAccessible::Dial) << "Level" << "-6.0 dB" << true;
        QTest::newRow("static text") << "Text" << "<Text>Head amp</Text>" << int(QAccessible::StaticText)
                                     << "Head amp" << "Head amp" << false;
        QTest::newRow("parameter text") << "ParameterText" << "<Address prmAddr='Ch1/Input'/>"
                                        << int(QAccessible::StaticText) << "Ch 1 Input" << "Mic 1" << false;
        QTest::newRow("editable parameter text")
            << "ParameterText" << "<Address prmAddr='Ch1/Input'/><ReadOnly>false</ReadOnly>"
            << int(QAccessible::EditableText) << "Ch 1 Input" << "Mic 1" << false;
        QTest::newRow("graph") << "Graph" << "" << int(QAccessible::Graphic) << "" << "" << false;
    }

    void familyInterface()
    {
        QFETCH(QString, type);
        QFETCH(QString, xml);
        QFETCH(int, role);
        QFETCH(QString, name);
        QFETCH(QString, value);
        QFETCH(bool, hasPosition);

        BaseWidget *w = build(type, xml);
        QVERIFY(w);
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w);
        QVERIFY(iface);
        QCOMPARE(int(iface->role()), role);
        if (!name.isEmpty())
            QCOMPARE(iface->text(QAccessible::Name), name);
        QCOMPARE(iface->text(QAccessible::Value), value);
        if (value.isEmpty()) {
            QVERIFY(!iface->textInterface());
        } else {
            QVERIFY(iface->textInterface());
            QCOMPARE(iface->textInterface()->text(0, -1), value);
            QCOMPARE(iface->textInterface()->characterCount(), value.size());
        }
        QCOMPARE(iface->valueInterface() != nullptr, hasPosition);
        if (hasPosition)
            QCOMPARE(iface->valueInterface()->currentValue().toDouble(), 0.25);
    }

    void nameFromAddress_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name");
        QTest::newRow("channel") << "Ch1/Fader" << "Ch 1 Fader";
        QTest::newRow("two digits, category") << "Meter:Ch12/Level" << "Ch 12 Level";
        QTest::newRow("underscores") << "Mix_Bus3/Send" << "Mix Bus 3 Send";
        QTest::newRow("placeholder") << "In/Ch{ChNum}/Gain" << "In Ch Gain";
        QTest::newRow("digit before letters") << "Out/2Way" << "Out 2Way";
        QTest::newRow("colon inside the path") << "Ch1/Time:Mode" << "Ch 1 Time:Mode";
    }

    void nameFromAddress()
    {
        QFETCH(QString, address);
        QFETCH(QString, name);
        QCOMPARE(AccessibleControl::nameFromAddress(address), name);
    }

    void states()
    {
        BaseWidget *button = build(QStringLiteral("Button"),
                                   QStringLiteral("<Rect x='0' y='0' width='60' height='20'/>"
                                                  "<Address prmAddr='Ch1/Mute'/><ReadOnly>true</ReadOnly>"));
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(button);
        QVERIFY(iface->state().checkable);
        QVERIFY(iface->state().checked);
        QVERIFY(iface->state().readOnly);
        QVERIFY(!iface->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));

        host.setParameter(QStringLiteral("Ch1/Mute"), QStringLiteral("0"), QStringLiteral("Off"));
        button->notifyValueChanged({{"dev_uniq_id", "dev1"}, {"prmAddr", "Ch1/Mute"}});
        QVERIFY(!iface->state().checked);

        button->setEnabled(false);
        QVERIFY(iface->state().disabled);
    }

    // Actions take the keyboard's path, so they send what the keys send.
    void actions_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::newRow("dial up") << "Dial" << QAccessibleActionInterface::increaseAction() << 2 << "ui_prm_step" << "1";
        QTest::newRow("fader down") << "Fader" << QAccessibleActionInterface::decreaseAction() << 2 << "ui_prm_step"
                                    << "-1";
        QTest::newRow("number box up") << "NumberBox" << QAccessibleActionInterface::increaseAction() << 2
                                       << "ui_prm_step" << "1";
        QTest::newRow("toggle") << "Button" << QAccessibleActionInterface::pressAction() << 0 << "ui_prm_val" << "0";
    }

    void actions()
    {
        QFETCH(QString, type);
        QFETCH(QString, action);
        QFETCH(int, kind);
        QFETCH(QString, key);
        QFETCH(QString, text);
        const QString address = type == QLatin1String("Button") ? "Ch1/Mute" : "Ch1/Fader";
        BaseWidget *w = build(type, QStringLiteral("<Rect x='0' y='0' width='60' height='60'/>"
                                                   "<Address prmAddr='%1'/>").arg(address));
        host.requests.clear();
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w);
        QVERIFY(iface->actionInterface()->actionNames().contains(action));
        iface->actionInterface()->doAction(action);
        QCOMPARE(host.requests.size(), 1);
        QCOMPARE(host.requests.at(0).kind, kind);
        QCOMPARE(host.requests.at(0).arguments.value(key), text);
    }

    void setCurrentValue()
    {
        BaseWidget *dial = build(QStringLiteral("Dial"), QStringLiteral("<Rect x='0' y='0' width='48' height='48'/>"
                                                                       "<Address prmAddr='Ch1/Fader'/>"));
        host.requests.clear();
        QAccessibleValueInterface *value = QAccessible::queryAccessibleInterface(dial)->valueInterface();
        value->setCurrentValue(0.5);
        value->setCurrentValue(QStringLiteral("nan"));
        value->setCurrentValue(7.0);
        QCOMPARE(host.requests.size(), 2);
        QCOMPARE(host.requests.at(0).arg("ui_prm_val"), QStringLiteral("0.5"));
        QCOMPARE(host.requests.at(0).arg("set_prm_type"), QStringLiteral("0"));
        QCOMPARE(host.requests.at(1).arg("ui_prm_val"), QStringLiteral("1"));

        // A meter only shows.
        BaseWidget *meter = build(QStringLiteral("Meter"), QStringLiteral("<Address prmAddr='Ch1/Fader'/>"));
        host.requests.clear();
        QAccessible::queryAccessibleInterface(meter)->valueInterface()->setCurrentValue(0.5);
        QVERIFY(host.requests.isEmpty());
    }

    // The ring shows on keyboard focus only, inset by two design pixels times the zoom.
    void focusRing_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<float>("zoom");
        QTest::newRow("dial") << "Dial" << 1.0f;
        QTest::newRow("fader") << "Fader" << 1.0f;
        QTest::newRow("number box") << "NumberBox" << 1.0f;
        QTest::newRow("button") << "Button" << 1.0f;
        QTest::newRow("combo box") << "ComboBox" << 1.0f;
        QTest::newRow("dial at zoom 2") << "Dial" << 2.0f;
    }

    void focusRing()
    {
        QFETCH(QString, type);
        QFETCH(float, zoom);
        host.zoom = zoom;
        BaseWidget *w = build(type, QStringLiteral("<Rect x='10' y='10' width='60' height='60'/>"
                                                   "<Address prmAddr='Ch1/Fader'/><Focus>strong</Focus>"));
        w->setZoom(zoom);
        const QImage plain = w->grab().toImage();

        w->setFocus(Qt::MouseFocusReason);
        QVERIFY(w->hasFocus());
        QVERIFY(!FocusRing::shown(w));
        QCOMPARE(w->grab().toImage(), plain);

        w->clearFocus();
        w->setFocus(Qt::TabFocusReason);
        QVERIFY(FocusRing::shown(w));
        const QImage ringed = w->grab().toImage();
        QVERIFY(ringed != plain);
        // The ring runs along the inset: the row through its top edge changed somewhere.
        const int inset = qMax(2, int(2 * zoom));
        bool changed = false;
        for (int x = inset; x < ringed.width() - inset; ++x)
            changed |= ringed.pixel(x, inset) != plain.pixel(x, inset);
        QVERIFY(changed);
        // Nothing outside the ring changed.
        for (int y = 0; y < inset; ++y) {
            for (int x = 0; x < ringed.width(); ++x)
                QCOMPARE(ringed.pixel(x, y), plain.pixel(x, y));
        }

        w->clearFocus();
        QVERIFY(!FocusRing::shown(w));
        QCOMPARE(w->grab().toImage(), plain);
        host.zoom = 1.0f;
    }

    void doubleClickEdits_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("edits");
        QTest::newRow("plain") << Qt::KeyboardModifiers(Qt::NoModifier) << true;
        QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier) << false;
        QTest::newRow("control") << Qt::KeyboardModifiers(Qt::ControlModifier) << false;
    }

    void doubleClickEdits()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, edits);
        BaseWidget *box = build(QStringLiteral("NumberBox"),
                                QStringLiteral("<Rect x='0' y='0' width='60' height='18'/><Address prmAddr='Ch1/Fader'/>"));
        host.requests.clear();
        const QPoint at(30, 9);
        Input::mouse(box, QEvent::MouseButtonPress, at, Qt::LeftButton, modifiers);
        Input::mouse(box, QEvent::MouseButtonRelease, at, Qt::LeftButton, modifiers);
        Input::mouse(box, QEvent::MouseButtonDblClick, at, Qt::LeftButton, modifiers);
        Input::mouse(box, QEvent::MouseButtonRelease, at, Qt::LeftButton, modifiers);
        QCOMPARE(box->property("editing").toBool(), edits);
        if (edits) {
            QVERIFY(host.requests.isEmpty());
            QCOMPARE(box->property("editorText").toString(), QStringLiteral("-6.0 dB"));
        }
    }
};

QTEST_MAIN(tst_Accessibility)
#include "tst_accessibility.moc"
