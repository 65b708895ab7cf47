#include "LevelList.h"

#include "core/BaseWidget.h"
#include "data/AbstractDatabase.h"
#include "data/ParameterKeys.h"

#include <QAction>
#include <QDomElement>
#include <QMenu>

bool LevelList::read(const QDomElement &e)
{
    m_levels.clear();
    m_positionsAsked = false;
    for (QDomElement c = e.firstChildElement(QStringLiteral("Level")); !c.isNull();
         c = c.nextSiblingElement(QStringLiteral("Level"))) {
        const QString label = c.attribute(QStringLiteral("text"));
        if (label.isEmpty())
            continue;
        Level level;
        level.label = label;
        level.value = c.text();
        bool ok = false;
        const double position = c.attribute(QStringLiteral("position")).toDouble(&ok);
        if (ok && position >= 0 && position <= 1)
            level.position = position;
        level.at = c.attribute(QStringLiteral("at")).trimmed();
        m_levels.append(level);
    }
    return true;
}

void LevelList::resolvePositions(const BaseWidget &control)
{
    if (m_positionsAsked)
        return;
    IAbstractDB *db = abstractDatabase();
    if (!db || control.addressCount() == 0)
        return;
    m_positionsAsked = true;
    const ParameterAddress &a = control.addressAt(0);
    QVariantMap address;
    for (const QLatin1String &k : {Key::dev_model, Key::dev_uniq_id, Key::prmAddr})
        address.insert(k, a.key(k));
    if (!a.zoneId().isEmpty())
        address.insert(Key::zone_uniq_id, a.zoneId());
    for (Level &level : m_levels) {
        if (level.at.isEmpty())
            continue;
        bool ok = false;
        const double position = db->positionOfText(address, level.at).toDouble(&ok);
        level.position = ok && position >= 0 && position <= 1 ? position : -1;
    }
}

QStringList LevelList::describe() const
{
    QStringList out;
    for (const Level &level : m_levels)
        out << level.label + QLatin1Char(':') + level.value;
    return out;
}

void LevelList::addToMenu(QMenu *menu)
{
    m_actions.clear();
    if (m_levels.isEmpty())
        return;
    if (!menu->actions().isEmpty())
        menu->addSeparator();
    for (const Level &level : qAsConst(m_levels))
        m_actions.insert(menu->addAction(level.label), level.value);
}

bool LevelList::valueOf(const QAction *action, QString *value) const
{
    const auto it = m_actions.constFind(action);
    if (it == m_actions.cend())
        return false;
    *value = *it;
    return true;
}

bool LevelList::sendChoice(const QAction *action, BaseWidget &control) const
{
    QString value;
    if (!valueOf(action, &value))
        return false;
    control.requestText(value, 0);
    return true;
}
