#ifndef CORVANE_TESTS_CONTROLTESTHOST_H
#define CORVANE_TESTS_CONTROLTESTHOST_H

#include <corvane/IAbstractDB.h>
#include <corvane/IHostCore.h>
#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>

#include <QApplication>
#include <QDomDocument>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QtTest>

#include <memory>

/*
    The host side of the control tests: a parameter table keyed by
    "dev_uniq_id|prmAddr", a record of every request, and helpers that build
    a control from a description and drive it with events.
*/
class ControlTestHost : public IHostCore
{
public:
    struct Request
    {
        int index;
        QVariantMap address;
        int kind;
        QMap<QString, QString> arguments;
        QString arg(const char *key) const { return arguments.value(QLatin1String(key)); }
    };

    void setParameter(const QString &prmAddr, const QString &val, const QString &str,
                      const QString &device = QStringLiteral("dev1"))
    {
        QMap<QString, QString> &p = parameters[device + QLatin1Char('|') + prmAddr];
        p.insert(QStringLiteral("ui_prm_val"), val);
        p.insert(QStringLiteral("ui_prm_str"), str);
    }

    bool readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &) override
    {
        const auto it = parameters.constFind(address.deviceId() + QLatin1Char('|') + address.prmAddr());
        if (it == parameters.cend())
            return false;
        for (auto a = it->cbegin(); a != it->cend(); ++a)
            value.set(a.key(), a.value());
        return true;
    }
    bool sendRequest(QWidget *, int index, const QVariantMap &address, int kind,
                     const QMap<QString, QString> &arguments) override
    {
        requests.append({index, address, kind, arguments});
        return true;
    }
    void selectParameter(QWidget *, const QString &, const QString &) override { ++selections; }
    float zoomFactor() const override { return zoom; }
    IHostTarget *currentTarget() override { return nullptr; }
    QVariantMap ownerDevice(const QWidget *) override
    {
        return {{QStringLiteral("dev_uniq_id"), QStringLiteral("dev1")},
                {QStringLiteral("dev_model"), QStringLiteral("Model1")}};
    }
    bool parameterExists(const QVariantMap &) override { return true; }
    int mode() const override { return 0; }
    bool isActive(const QWidget *) const override { return true; }
    int state(int, int) const override { return 0; }
    QVariantMap editorInfo() const override { return editor; }
    QString imageBasePath() const override { return QString(); }
    void contextAction(QWidget *, const QString &, const QVariantMap &) override { }

    //! Builds \a type from the children of a <Widget> element written as \a xml, shown in a window.
    template <class W>
    W *make(const QString &xml)
    {
        window.reset(new QWidget);
        window->resize(400, 300);
        auto *w = new W(this, &registry, window.get());
        QDomDocument doc;
        doc.setContent(QStringLiteral("<Widget>%1</Widget>").arg(xml));
        w->configure(doc.documentElement());
        registry.commitAll();
        window->show();
        QApplication::setActiveWindow(window.get());
        if (!QTest::qWaitForWindowActive(window.get()))
            qWarning("test window did not become active");
        return w;
    }

    QMap<QString, QMap<QString, QString>> parameters;
    QList<Request> requests;
    QVariantMap editor;
    ParameterManagementRegistry registry;
    std::unique_ptr<QWidget> window;
    float zoom = 1.0f;
    int selections = 0;
};

namespace Input {

inline void mouse(QWidget *w, QEvent::Type type, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent e(type, pos, w->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : button,
                  buttons, modifiers);
    QApplication::sendEvent(w, &e);
}

//! Sends a key to the focus widget inside \a w, or to \a w; true when it was accepted.
inline bool key(QWidget *w, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = QString())
{
    QWidget *focus = QApplication::focusWidget();
    QWidget *target = focus && w->isAncestorOf(focus) ? focus : w;
    QKeyEvent e(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(target, &e);
    return e.isAccepted();
}

} // namespace Input

/*
    A database that answers only the delay conversion, recording what it was
    asked.
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

    QString answer;
    mutable QVariantMap asked;
    mutable QString askedUnit;
    mutable QString askedText;
};

#endif
