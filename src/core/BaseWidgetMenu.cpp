// Selection, the context menu for the host's parameter sets and groups, the
// parameter drag and the mouse conventions the value controls share.

#include "BaseWidget.h"

#include "data/ParameterKeys.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>

namespace {

const char *const menuAddToParameterSet = "Add to Parameter Set";
const char *const menuAddNewParameterSet = "Add New Parameter Set";
const char *const menuAddToRemoteControlList = "Add to Remote Control List";
const char *const menuAddToParameterLinkGroup = "Add to Parameter Link Group";
const char *const menuAddNewGroup = "Add New Group";

} // namespace

bool BaseWidget::selectAddress(int index, bool report)
{
    if (!m_binding.contains(index))
        return false;
    m_currentAddressIndex = index;
    if (report && m_hostCore) {
        QString first, second;
        selectionTexts(index, first, second);
        m_hostCore->selectParameter(this, first, second);
    }
    return true;
}

void BaseWidget::selectionTexts(int index, QString &first, QString &second) const
{
    const ParameterAddress &a = addressAt(index);
    first = a.deviceId();
    if (!m_visibleParameterName)
        second.clear();
    else
        second = m_replaceParameterName.isEmpty() ? a.prmAddr() : m_replaceParameterName;
}

QMenu *BaseWidget::createContextMenu()
{
    if (!m_contextMenuVisible)
        return nullptr;
    QMenu *menu = new QMenu(this);
    buildContextMenu(menu);
    if (menu->actions().isEmpty()) {
        delete menu;
        return nullptr;
    }
    connect(menu, SIGNAL(triggered(QAction *)), this, SLOT(selectedMenu(QAction *)));
    return menu;
}

void BaseWidget::buildContextMenu(QMenu *menu)
{
    if (m_binding.count() == 0)
        return;
    QVariantMap data = addressAt(m_currentAddressIndex).keys();
    data.insert(QStringLiteral("widget"), m_name);
    for (const char *text : {menuAddToParameterSet, menuAddNewParameterSet, menuAddToRemoteControlList,
                             menuAddToParameterLinkGroup, menuAddNewGroup}) {
        QAction *action = menu->addAction(QString::fromLatin1(text));
        action->setData(data);
    }
}

void BaseWidget::selectedMenu(QAction *action)
{
    if (!action)
        return;
    const QString text = action->text();
    if (text == QLatin1String(menuAddToParameterSet))
        addToParameterSet(action->data().toMap());
    else if (text == QLatin1String(menuAddNewParameterSet))
        addNewParameterSet();
    else if (text == QLatin1String(menuAddToRemoteControlList))
        addToRemoteControlList();
    else if (text == QLatin1String(menuAddToParameterLinkGroup))
        addToParameterLinkGroup(action->data().toMap());
    else if (text == QLatin1String(menuAddNewGroup))
        addNewGroup();
    else
        menuEntryChosen(action);
}

void BaseWidget::addToParameterSet(const QVariantMap &data)
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToParameterSet), data);
}

void BaseWidget::addNewParameterSet()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddNewParameterSet), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::addToRemoteControlList()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToRemoteControlList), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::addToParameterLinkGroup(const QVariantMap &data)
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToParameterLinkGroup), data);
}

void BaseWidget::addNewGroup()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddNewGroup), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createContextMenu();
    if (!menu) {
        QWidget::contextMenuEvent(event);
        return;
    }
    menu->exec(event->globalPos());
    delete menu;
}

QString BaseWidget::dragPayload(int index) const
{
    QJsonObject payload = QJsonObject::fromVariantMap(addressAt(index).keys());
    payload.insert(QStringLiteral("widget"), m_name);
    return QString::fromUtf8(QJsonDocument(payload).toJson(QJsonDocument::Compact));
}

void BaseWidget::pressNotified(QMouseEvent *event)
{
    m_pressPoint = event->pos();
    selectAddress(m_currentAddressIndex, true);
}

void BaseWidget::controlClick(QMouseEvent *event)
{
    // Control-click adds the control to (or takes it out of) the host's
    // multiple selection.
    m_pressPoint = event->pos();
    if (event->type() == QEvent::MouseButtonPress) {
        setHighlight(!m_highlight);
        selectAddress(m_currentAddressIndex, true);
    }
}

void BaseWidget::linkClick(QMouseEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        QVariantMap data = addressAt(m_currentAddressIndex).keys();
        data.insert(QStringLiteral("widget"), m_name);
        addToParameterLinkGroup(data);
    }
}

bool BaseWidget::handOverModifierPress(QMouseEvent *event)
{
    const Qt::KeyboardModifiers mods = event->modifiers();
    if (!(mods & Qt::ControlModifier))
        return false;
    if (mods & Qt::ShiftModifier)
        linkClick(event);
    else
        controlClick(event);
    return true;
}

bool BaseWidget::maybeStartParameterDrag(QMouseEvent *event)
{
    if (!m_dragEnabled || event->modifiers() != Qt::ControlModifier || !(event->buttons() & Qt::LeftButton))
        return false;
    if ((event->pos() - m_pressPoint).manhattanLength() < QApplication::startDragDistance())
        return false;
    auto *mime = new QMimeData;
    mime->setText(dragPayload(m_currentAddressIndex));
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->exec(Qt::CopyAction);
    return true;
}

void BaseWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !handOverModifierPress(event))
        pressNotified(event);
    QWidget::mousePressEvent(event);
}

void BaseWidget::mouseMoveEvent(QMouseEvent *event)
{
    maybeStartParameterDrag(event);
    QWidget::mouseMoveEvent(event);
}

