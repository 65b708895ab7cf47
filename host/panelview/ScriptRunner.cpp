#include "ScriptRunner.h"

#include "JsonWriter.h"
#include "PanelHost.h"
#include "ParameterDatabase.h"
#include "ScriptSyntax.h"

#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>

#include <QApplication>
#include <QColor>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWheelEvent>

#include <memory>

using namespace ScriptSyntax;

namespace {

// The panel as the user sees it: with the tool-tip windows over it (a
// control's value read-out) drawn in where they overlap.
QPixmap panelPicture(QWidget *panel)
{
    QPixmap picture = panel->grab();
    const QRect area(panel->mapToGlobal(QPoint(0, 0)), panel->size());
    QPainter painter(&picture);
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (w->isVisible() && w->windowType() == Qt::ToolTip && w->geometry().intersects(area))
            painter.drawPixmap(w->geometry().topLeft() - area.topLeft(), w->grab());
    }
    return picture;
}


QString focusPolicyName(Qt::FocusPolicy policy)
{
    switch (policy) {
    case Qt::NoFocus: return QStringLiteral("NoFocus");
    case Qt::TabFocus: return QStringLiteral("TabFocus");
    case Qt::ClickFocus: return QStringLiteral("ClickFocus");
    case Qt::StrongFocus: return QStringLiteral("StrongFocus");
    case Qt::WheelFocus: return QStringLiteral("WheelFocus");
    }
    return QString::number(int(policy));
}

int enumValue(const QVariant &value)
{
    bool ok = false;
    const int i = value.toInt(&ok);
    if (ok)
        return i;
    // QVariant does not convert QFlags types (Qt::Alignment, ...) to int,
    // but every one of them holds just an int.
    return QMetaType::sizeOf(value.userType()) == int(sizeof(int)) ? *static_cast<const int *>(value.constData()) : 0;
}

QString propertyJson(const QMetaProperty &property, const QVariant &value)
{
    if (property.isEnumType()) {
        const QMetaEnum e = property.enumerator();
        const int v = enumValue(value);
        const QByteArray keys = e.isFlag() ? e.valueToKeys(v) : QByteArray(e.valueToKey(v));
        return Json::string(keys.isEmpty() ? QString::number(v) : QString::fromLatin1(keys));
    }
    switch (int(value.type())) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Double:
    case QMetaType::Float:
        return Json::number(value.toDouble());
    case QMetaType::Bool:
        return Json::string(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
    case QMetaType::QColor: {
        const QColor c = value.value<QColor>();
        return Json::string(QStringLiteral("%1,%2,%3,%4").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alpha()));
    }
    case QMetaType::QRect: {
        const QRect r = value.toRect();
        return Json::string(QStringLiteral("%1,%2,%3,%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
    }
    case QMetaType::QRectF: {
        const QRectF r = value.toRectF();
        return Json::string(QStringLiteral("%1,%2,%3,%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
    }
    case QMetaType::QSize:
        return Json::string(QStringLiteral("%1,%2").arg(value.toSize().width()).arg(value.toSize().height()));
    case QMetaType::QSizeF:
        return Json::string(QStringLiteral("%1,%2").arg(value.toSizeF().width()).arg(value.toSizeF().height()));
    case QMetaType::QPoint:
        return Json::string(QStringLiteral("%1,%2").arg(value.toPoint().x()).arg(value.toPoint().y()));
    case QMetaType::QPointF:
        return Json::string(QStringLiteral("%1,%2").arg(value.toPointF().x()).arg(value.toPointF().y()));
    case QMetaType::QStringList:
        return Json::string(value.toStringList().join(QLatin1Char(',')));
    }
    return Json::string(value.toString());
}

QAction *findAction(QMenu *menu, const QString &text)
{
    for (QAction *a : menu->actions()) {
        if (a->isSeparator())
            continue;
        if (a->text() == text || QString(a->text()).remove(QLatin1Char('&')) == text)
            return a->menu() ? nullptr : a;
        if (a->menu()) {
            if (QAction *inner = findAction(a->menu(), text))
                return inner;
        }
    }
    return nullptr;
}

QMenu *contextMenuOf(QWidget *widget)
{
    QMenu *menu = nullptr;
    if (!QMetaObject::invokeMethod(widget, "createContextMenu", Qt::DirectConnection, Q_RETURN_ARG(QMenu *, menu)))
        return nullptr;
    return menu;
}

} // namespace

ScriptRunner::ScriptRunner(PanelHost *host, QTextStream *out)
    : m_host(host), m_out(out)
{
}

ScriptRunner::~ScriptRunner()
{
    // The panel outlives the runner; what it reports later has nowhere to go.
    m_host->setEventSink(nullptr);
}

void ScriptRunner::print(const QString &line)
{
    *m_out << line << '\n';
    m_out->flush();
}

bool ScriptRunner::run(const QString &script, const QString &fileName)
{
    m_host->setEventSink([this](const QString &line) { print(line); });
    // A script has no user to answer a dialog: colour questions are cancelled until it says otherwise.
    m_host->setColorAnswer(true);
    m_host->setFileAnswer(true);
    m_folder = fileName == QLatin1String("<stdin>") ? QDir::currentPath() : QFileInfo(fileName).absolutePath();
    if (QWidget *panel = m_host->panel()) {
        panel->show();
        QApplication::setActiveWindow(panel);
        QCoreApplication::processEvents();
    }
    const QStringList lines = script.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        QStringList tokens;
        QString message;
        if (!tokenize(lines.at(i), &tokens, &message) || (!tokens.isEmpty() && !execute(tokens, &message))) {
            m_error = QStringLiteral("%1:%2: %3").arg(fileName).arg(i + 1).arg(message);
            return false;
        }
        if (tokens.isEmpty())
            continue;
        QCoreApplication::processEvents();
        m_host->commitRegistry();
    }
    return true;
}

bool ScriptRunner::control(const QString &name, IWidgetCore **core, QWidget **widget, QString *message) const
{
    *core = m_host->control(name);
    *widget = *core ? widgetOf(*core) : nullptr;
    if (!*widget) {
        *message = QStringLiteral("no widget named \"%1\"").arg(name);
        return false;
    }
    return true;
}

bool ScriptRunner::pointer(const QStringList &tokens, Pointer *p, QString *message) const
{
    if (tokens.size() < 4) {
        *message = QStringLiteral("%1 needs a widget and a position").arg(tokens.first());
        return false;
    }
    if (!control(tokens.at(1), &p->core, &p->widget, message))
        return false;
    if (!parseInt(tokens.at(2), &p->x) || !parseInt(tokens.at(3), &p->y)) {
        *message = QStringLiteral("bad position \"%1 %2\"").arg(tokens.at(2), tokens.at(3));
        return false;
    }
    return true;
}

void ScriptRunner::sendMouse(QWidget *widget, int type, const QPoint &pos, Qt::MouseButton button,
                             Qt::KeyboardModifiers modifiers)
{
    // Events go where a real pointer's would: to an open popup or to the
    // widget that grabbed the mouse (an open editor) before the control.
    const QPoint global = widget->mapToGlobal(pos);
    QWidget *target = QApplication::activePopupWidget();
    if (!target)
        target = QWidget::mouseGrabber();
    if (!target)
        target = widget;
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)
        m_held |= button;
    else if (type == QEvent::MouseButtonRelease)
        m_held &= ~button;

    if (type == QEvent::MouseButtonPress && target == widget) {
        // A click gives the focus to the first widget from here up that takes it by click.
        for (QWidget *w = widget; w; w = w->parentWidget()) {
            if (w->isEnabled() && (w->focusPolicy() & Qt::ClickFocus)) {
                w->setFocus(Qt::MouseFocusReason);
                break;
            }
            if (w->isWindow())
                break;
        }
    }
    const QPoint local = target->mapFromGlobal(global);
    QMouseEvent event(QEvent::Type(type), local, target->window()->mapFromGlobal(global), global,
                      type == QEvent::MouseMove ? Qt::NoButton : button, m_held, modifiers);
    QApplication::sendEvent(target, &event);
}

bool ScriptRunner::mouse(const QStringList &tokens, QString *message)
{
    Pointer p;
    if (!pointer(tokens, &p, message))
        return false;
    const QString &command = tokens.first();
    const bool isMove = command == QLatin1String("move");
    Qt::MouseButton button = Qt::LeftButton;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    bool haveButton = false, haveModifiers = false;
    for (int i = 4; i < tokens.size(); ++i) {
        if (!isMove && !haveButton && !haveModifiers && parseButton(tokens.at(i), &button)) {
            haveButton = true;
        } else if (!haveModifiers && parseModifiers(tokens.at(i), &modifiers)) {
            haveModifiers = true;
        } else {
            *message = QStringLiteral("unexpected \"%1\" (expected %2)")
                           .arg(tokens.at(i), isMove ? QStringLiteral("modifiers")
                                                     : QStringLiteral("a button or modifiers"));
            return false;
        }
    }
    QPointer<QWidget> widget = p.widget;
    const QPoint pos(p.x, p.y);
    auto send = [&](QEvent::Type type) {
        if (widget)
            sendMouse(widget, type, pos, button, modifiers);
    };
    if (command == QLatin1String("press")) {
        send(QEvent::MouseButtonPress);
    } else if (command == QLatin1String("release")) {
        send(QEvent::MouseButtonRelease);
    } else if (isMove) {
        send(QEvent::MouseMove);
    } else if (command == QLatin1String("click")) {
        send(QEvent::MouseButtonPress);
        send(QEvent::MouseButtonRelease);
    } else {
        send(QEvent::MouseButtonPress);
        send(QEvent::MouseButtonRelease);
        send(QEvent::MouseButtonDblClick);
        send(QEvent::MouseButtonRelease);
    }
    return true;
}

bool ScriptRunner::wheel(const QStringList &tokens, QString *message)
{
    Pointer p;
    if (!pointer(tokens, &p, message))
        return false;
    int delta = 0;
    if (tokens.size() < 5 || !parseInt(tokens.at(4), &delta)) {
        *message = QStringLiteral("wheel needs a delta in eighths of a degree");
        return false;
    }
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    if (tokens.size() > 6 || (tokens.size() == 6 && !parseModifiers(tokens.at(5), &modifiers))) {
        *message = QStringLiteral("unexpected \"%1\" (expected modifiers)").arg(tokens.last());
        return false;
    }
    const QPoint pos(p.x, p.y);
    QWidget *target = QApplication::activePopupWidget();
    if (!target)
        target = p.widget;
    const QPoint global = p.widget->mapToGlobal(pos);
    QWheelEvent event(target->mapFromGlobal(global), global, QPoint(), QPoint(0, delta), m_held, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
    return true;
}

bool ScriptRunner::key(const QStringList &tokens, QString *message)
{
    const QString &command = tokens.first();
    if (tokens.size() < 3) {
        *message = QStringLiteral("%1 needs a widget and a key").arg(command);
        return false;
    }
    IWidgetCore *core;
    QWidget *widget;
    if (!control(tokens.at(1), &core, &widget, message))
        return false;
    int code;
    QString text;
    if (!parseKey(tokens.at(2), &code, &text)) {
        *message = QStringLiteral("unknown key \"%1\"").arg(tokens.at(2));
        return false;
    }
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    bool autoRepeat = false, haveModifiers = false;
    for (int i = 3; i < tokens.size(); ++i) {
        if (command != QLatin1String("key") && tokens.at(i) == QLatin1String("autorepeat") && !autoRepeat) {
            autoRepeat = true;
        } else if (!haveModifiers && !autoRepeat && parseModifiers(tokens.at(i), &modifiers)) {
            haveModifiers = true;
        } else {
            *message = QStringLiteral("unexpected \"%1\"").arg(tokens.at(i));
            return false;
        }
    }
    if (modifiers & Qt::ShiftModifier)
        text = text.toUpper();
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier))
        text.clear();

    // While the control has an editor open, the editor has the focus.
    QWidget *focus = QApplication::focusWidget();
    QPointer<QWidget> target = focus && widget->isAncestorOf(focus) ? focus : widget;
    if (command != QLatin1String("keyrelease")) {
        QKeyEvent press(QEvent::KeyPress, code, modifiers, text, autoRepeat);
        QApplication::sendEvent(target, &press);
    }
    if (command != QLatin1String("keypress") && target) {
        QKeyEvent release(QEvent::KeyRelease, code, modifiers, text, autoRepeat);
        QApplication::sendEvent(target, &release);
    }
    return true;
}

bool ScriptRunner::typeText(const QStringList &tokens, QString *message)
{
    const QString text = QStringList(tokens.mid(1)).join(QLatin1Char(' '));
    for (const QChar c : text) {
        QWidget *focus = QApplication::focusWidget();
        if (!focus) {
            *message = QStringLiteral("no widget has the focus");
            return false;
        }
        int code;
        QString typed;
        keyForCharacter(c, &code, &typed);
        QPointer<QWidget> target = focus;
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, typed);
        QApplication::sendEvent(target, &press);
        if (target) {
            QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, typed);
            QApplication::sendEvent(target, &release);
        }
    }
    return true;
}

bool ScriptRunner::set(const QStringList &tokens, QString *message)
{
    if (tokens.size() < 4) {
        *message = QStringLiteral("set needs a widget, an index and KEY=VALUE pairs");
        return false;
    }
    IWidgetCore *core;
    QWidget *widget;
    if (!control(tokens.at(1), &core, &widget, message))
        return false;
    int index;
    if (!parseInt(tokens.at(2), &index) || index < 0 || index >= core->addressCount()) {
        *message = QStringLiteral("widget \"%1\" has no address %2 (it has %3)")
                       .arg(tokens.at(1), tokens.at(2)).arg(core->addressCount());
        return false;
    }
    QMap<QString, QString> texts;
    for (int i = 3; i < tokens.size(); ++i) {
        const int eq = tokens.at(i).indexOf(QLatin1Char('='));
        if (eq <= 0) {
            *message = QStringLiteral("expected KEY=VALUE, not \"%1\"").arg(tokens.at(i));
            return false;
        }
        texts.insert(tokens.at(i).left(eq), tokens.at(i).mid(eq + 1));
    }
    const QVariantMap address = core->address(index).keys();
    if (!m_host->database()->store(address, texts)) {
        *message = QStringLiteral("address %1 of \"%2\" names device \"%3\", which the panel does not declare")
                       .arg(index).arg(tokens.at(1), address.value(QStringLiteral("dev_uniq_id")).toString());
        return false;
    }
    return true;
}

bool ScriptRunner::menu(const QStringList &tokens, bool choose, QString *message)
{
    if (tokens.size() != (choose ? 3 : 2)) {
        *message = choose ? QStringLiteral("menu needs a widget and an entry text")
                          : QStringLiteral("menuitems needs a widget");
        return false;
    }
    IWidgetCore *core;
    QWidget *widget;
    if (!control(tokens.at(1), &core, &widget, message))
        return false;
    std::unique_ptr<QMenu> menu(contextMenuOf(widget));
    if (!choose) {
        QStringList items;
        if (menu) {
            for (QAction *a : menu->actions()) {
                if (!a->isSeparator())
                    items << a->text();
            }
        }
        print(Json::Object()
                  .add(QStringLiteral("event"), "menu")
                  .add(QStringLiteral("widget"), tokens.at(1))
                  .addRaw(QStringLiteral("items"), Json::strings(items))
                  .toString());
        return true;
    }
    QAction *action = menu ? findAction(menu.get(), tokens.at(2)) : nullptr;
    if (!action) {
        *message = QStringLiteral("the context menu of \"%1\" has no entry \"%2\"").arg(tokens.at(1), tokens.at(2));
        return false;
    }
    if (!action->isEnabled()) {
        *message = QStringLiteral("the entry \"%1\" is disabled").arg(tokens.at(2));
        return false;
    }
    action->trigger();
    return true;
}

QString ScriptRunner::dump(IWidgetCore *core) const
{
    QWidget *w = widgetOf(core);
    // Where the control is on its page, also when it sits in a tile.
    QRect g = w->geometry();
    const QWidget *parent = w->parentWidget();
    if (parent && parent->property(panelTileProperty).toBool())
        g.translate(parent->pos());
    QStringList addresses;
    for (int i = 0; i < core->addressCount(); ++i) {
        Json::Object a;
        const QVariantMap keys = core->address(i).keys();
        for (auto it = keys.cbegin(); it != keys.cend(); ++it)
            a.add(it.key(), it.value().toString());
        addresses << a.toString();
    }
    QList<const QMetaObject *> chain;
    bool based = false;
    for (const QMetaObject *m = w->metaObject(); m; m = m->superClass()) {
        if (qstrcmp(m->className(), "BaseWidget") == 0) {
            based = true;
            break;
        }
        chain.prepend(m);
    }
    Json::Object properties;
    if (based) {
        for (const QMetaObject *m : qAsConst(chain)) {
            for (int i = m->propertyOffset(); i < m->propertyCount(); ++i) {
                const QMetaProperty p = m->property(i);
                properties.addRaw(QString::fromLatin1(p.name()), propertyJson(p, p.read(w)));
            }
        }
    }
    return Json::Object()
        .add(QStringLiteral("event"), "dump")
        .add(QStringLiteral("widget"), w->objectName())
        .add(QStringLiteral("class"), QString::fromLatin1(w->metaObject()->className()))
        .addRaw(QStringLiteral("geometry"), Json::array({QString::number(g.x()), QString::number(g.y()),
                                                         QString::number(g.width()), QString::number(g.height())}))
        .add(QStringLiteral("visible"), w->isVisible())
        .add(QStringLiteral("enabled"), w->isEnabled())
        .add(QStringLiteral("focus"), w->hasFocus())
        .add(QStringLiteral("focusPolicy"), focusPolicyName(w->focusPolicy()))
        .add(QStringLiteral("pointSize"), w->font().pointSizeF())
        .addRaw(QStringLiteral("addresses"), Json::array(addresses))
        .addRaw(QStringLiteral("properties"), properties.toString())
        .toString();
}

// A day of simulated time is more than any meter remembers.
constexpr int maxTickMs = 24 * 3600 * 1000;

bool ScriptRunner::execute(const QStringList &tokens, QString *message)
{
    const QString &command = tokens.first();
    auto arguments = [&](int count, const char *usage) {
        if (tokens.size() == count + 1)
            return true;
        *message = QStringLiteral("usage: %1").arg(QLatin1String(usage));
        return false;
    };
    IWidgetCore *core = nullptr;
    QWidget *widget = nullptr;

    if (command == QLatin1String("set"))
        return set(tokens, message);
    if (command == QLatin1String("press") || command == QLatin1String("release") || command == QLatin1String("move")
        || command == QLatin1String("click") || command == QLatin1String("dblclick"))
        return mouse(tokens, message);
    if (command == QLatin1String("wheel"))
        return wheel(tokens, message);
    if (command == QLatin1String("key") || command == QLatin1String("keypress")
        || command == QLatin1String("keyrelease"))
        return key(tokens, message);
    if (command == QLatin1String("type"))
        return typeText(tokens, message);
    if (command == QLatin1String("focus") || command == QLatin1String("show") || command == QLatin1String("hide")) {
        if (!arguments(1, "focus|show|hide WIDGET") || !control(tokens.at(1), &core, &widget, message))
            return false;
        if (command == QLatin1String("focus"))
            widget->setFocus(Qt::OtherFocusReason);
        else
            widget->setVisible(command == QLatin1String("show"));
        return true;
    }
    if (command == QLatin1String("menu"))
        return menu(tokens, true, message);
    if (command == QLatin1String("menuitems"))
        return menu(tokens, false, message);
    if (command == QLatin1String("wait")) {
        int ms;
        if (!arguments(1, "wait MS"))
            return false;
        if (!parseInt(tokens.at(1), &ms) || ms < 0) {
            *message = QStringLiteral("bad time \"%1\"").arg(tokens.at(1));
            return false;
        }
        QEventLoop loop;
        QTimer::singleShot(ms, &loop, &QEventLoop::quit);
        loop.exec();
        return true;
    }
    if (command == QLatin1String("tick")) {
        int ms;
        if (!arguments(1, "tick MS"))
            return false;
        if (!parseInt(tokens.at(1), &ms) || ms < 0 || ms > maxTickMs) {
            *message = QStringLiteral("bad time \"%1\" (0 to %2 ms)").arg(tokens.at(1)).arg(maxTickMs);
            return false;
        }
        m_host->database()->advance(ms);
        return true;
    }
    if (command == QLatin1String("signal")) {
        if (tokens.size() < 4) {
            *message = QStringLiteral("usage: signal DEVICE INPUT off|tone DB|noise DB|envelope FILE");
            return false;
        }
        SignalSource source;
        if (!SignalSource::fromWords(tokens.mid(3), m_folder, &source, message))
            return false;
        if (!m_host->database()->setSignal(tokens.at(1), tokens.at(2), source)) {
            *message = QStringLiteral("device \"%1\" has no input \"%2\"").arg(tokens.at(1), tokens.at(2));
            return false;
        }
        return true;
    }
    if (command == QLatin1String("zoom")) {
        double zoom;
        if (!arguments(1, "zoom F"))
            return false;
        if (!parseNumber(tokens.at(1), &zoom) || zoom <= 0) {
            *message = QStringLiteral("bad zoom \"%1\" (a number above 0)").arg(tokens.at(1));
            return false;
        }
        m_host->setZoom(float(zoom));
        return true;
    }
    if (command == QLatin1String("db")) {
        if (tokens.size() != 3 || tokens.at(1) != QLatin1String("apply")
            || (tokens.at(2) != QLatin1String("on") && tokens.at(2) != QLatin1String("off"))) {
            *message = QStringLiteral("usage: db apply on|off");
            return false;
        }
        m_host->database()->setApplyRequests(tokens.at(2) == QLatin1String("on"));
        return true;
    }
    if (command == QLatin1String("dump")) {
        if (!arguments(1, "dump WIDGET") || !control(tokens.at(1), &core, &widget, message))
            return false;
        print(dump(core));
        return true;
    }
    if (command == QLatin1String("registry")) {
        if (!arguments(0, "registry"))
            return false;
        print(m_host->registryEvent());
        return true;
    }
    if (command == QLatin1String("screenshot")) {
        if (!arguments(1, "screenshot FILE"))
            return false;
        if (!m_host->panel() || !panelPicture(m_host->panel()).save(tokens.at(1), "PNG")) {
            *message = QStringLiteral("cannot write \"%1\"").arg(tokens.at(1));
            return false;
        }
        return true;
    }
    if (command == QLatin1String("colour")) {
        if (!arguments(1, "colour R,G,B|cancel"))
            return false;
        QColor answer;
        if (tokens.at(1) != QLatin1String("cancel")) {
            const QStringList parts = tokens.at(1).split(QLatin1Char(','));
            int rgb[3] = {-1, -1, -1};
            for (int i = 0; parts.size() == 3 && i < 3; ++i) {
                if (!parseInt(parts.at(i).trimmed(), &rgb[i]) || rgb[i] < 0 || rgb[i] > 255)
                    rgb[i] = -1;
            }
            if (rgb[0] < 0 || rgb[1] < 0 || rgb[2] < 0) {
                *message = QStringLiteral("bad colour \"%1\" (R,G,B from 0 to 255, or cancel)").arg(tokens.at(1));
                return false;
            }
            answer = QColor(rgb[0], rgb[1], rgb[2]);
        }
        m_host->setColorAnswer(true, answer);
        return true;
    }
    if (command == QLatin1String("file")) {
        if (!arguments(1, "file PATH|cancel"))
            return false;
        m_host->setFileAnswer(true, tokens.at(1) == QLatin1String("cancel") ? QString() : tokens.at(1));
        return true;
    }
    if (command == QLatin1String("echo")) {
        print(Json::Object()
                  .add(QStringLiteral("event"), "echo")
                  .add(QStringLiteral("text"), QStringList(tokens.mid(1)).join(QLatin1Char(' ')))
                  .toString());
        return true;
    }
    *message = QStringLiteral("unknown command \"%1\"").arg(command);
    return false;
}
