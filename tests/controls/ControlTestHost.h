#ifndef CORVANE_TESTS_CONTROLTESTHOST_H
#define CORVANE_TESTS_CONTROLTESTHOST_H

#include <corvane/IAbstractDB.h>
#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>

#include "core/BaseWidget.h"
#include "plugin/WidgetFactory.h"

#include "support/Gesture.h"
#include "support/RecordingHost.h"
#include "support/Xml.h"

#include <QApplication>
#include <QWidget>
#include <QtTest>

#include <memory>

/*
    The host side of the control tests: the recording host, with the owner
    device "dev1", every parameter taken to exist, and helpers that build a
    control from a description and drive it with events.
*/
class ControlTestHost : public RecordingHost
{
public:
    ControlTestHost() { active = true; }

    void setParameter(const QString &prmAddr, const QString &val, const QString &str,
                      const QString &device = QStringLiteral("dev1"))
    {
        RecordingHost::setParameter(device, prmAddr, val, str);
    }
    bool parameterExists(const QVariantMap &) override { return true; }

    //! Drops the window with its controls, then the parameters and everything recorded.
    void reset()
    {
        window.reset();
        clear();
    }

    //! Sets the parameter and tells \a w, as the host does when a value arrives.
    void deliver(BaseWidget *w, const QString &prmAddr, const QString &val, const QString &str,
                 const QString &device = QStringLiteral("dev1"))
    {
        setParameter(prmAddr, val, str, device);
        w->notifyValueChanged(parameterKeys(prmAddr, device));
    }

    //! Builds \a W from the children of a <Widget> element written as \a xml, shown in a window.
    template <class W>
    W *make(const QString &xml)
    {
        newWindow();
        auto *w = new W(this, &registry, window.get());
        show(w, xml);
        return w;
    }

    //! Builds the control the factory makes for the type name \a type, as a panel does; null when
    //! the factory knows no such type or it is no \a W.
    template <class W = BaseWidget>
    W *make(const QString &type, const QString &xml)
    {
        newWindow();
        WidgetFactory factory;
        auto *w = dynamic_cast<W *>(factory.create(type, window.get(), this, &registry));
        if (w)
            show(w, xml);
        return w;
    }

    ParameterManagementRegistry registry;
    std::unique_ptr<QWidget> window;

private:
    void newWindow()
    {
        window.reset(new QWidget);
        window->resize(400, 300);
    }
    void show(BaseWidget *w, const QString &xml)
    {
        w->configure(Xml::widget(xml));
        registry.commitAll();
        window->show();
        QApplication::setActiveWindow(window.get());
        if (!QTest::qWaitForWindowActive(window.get()))
            qWarning("test window did not become active");
    }
};

/*
    A database that answers only the delay conversion and value texts'
    positions, recording what it was asked.
*/
class ConversionDatabase : public IAbstractDB
{
public:
    QStringList devices() const override { return {}; }
    QVariantMap device(const QString &) const override { return {}; }
    bool readParameter(const QVariantMap &, QVariantMap &) const override { return false; }
    bool queryParameter(const QString &, const QVariantMap &, QMap<QString, QVariantMap> &) const override
    {
        return false;
    }
    bool request(const QVariantMap &, int, const QMap<QString, QString> &) override { return false; }
    bool parameterExists(const QVariantMap &) const override { return false; }
    QString convertDelay(const QVariantMap &address, const QString &unit, const QString &text) const override
    {
        asked = address;
        askedUnit = unit;
        askedText = text;
        return answer;
    }
    void setObserver(IParameterObserver *) override { }
    QString positionOfText(const QVariantMap &address, const QString &text) const override
    {
        asked = address;
        askedTexts << text;
        return positions.value(text);
    }

    QMap<QString, QString> positions; // value text to position text
    mutable QStringList askedTexts;
    QString answer;
    mutable QVariantMap asked;
    mutable QString askedUnit;
    mutable QString askedText;
};

#endif
