#ifndef CORVANE_CONTROLS_COMMON_LEVELLIST_H
#define CORVANE_CONTROLS_COMMON_LEVELLIST_H

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

class QAction;
class QDomElement;
class QMenu;

/*!
    \class LevelList
    \brief Named values offered in a control's context menu.

    Read from a "LevelList" element: each "Level" child with a non-empty
    "text" attribute contributes its label and, as element text, the value
    text that choosing it sends (a set-by-text request). A level may also
    carry a "position" attribute, the normalised position (0 to 1) of its
    value, which lets a fader draw a mark for it, or an "at" attribute, a
    value text ("0 dB") whose position the host's database gives; the
    control never computes a position itself.
*/
class BaseWidget;

class LevelList
{
public:
    struct Level
    {
        QString label;
        QString value;
        double position = -1; // below 0: unknown
        QString at;           // a value text to find the position of
        bool hasPosition() const { return position >= 0; }
    };

    //! Replaces the list with the levels of \a e.
    bool read(const QDomElement &e);

    bool isEmpty() const { return m_levels.isEmpty(); }
    int size() const { return m_levels.size(); }
    const Level &at(int i) const { return m_levels.at(i); }
    const QVector<Level> &levels() const { return m_levels; }
    //! Asks the database, once after each read, for the positions of the levels given by a value text,
    //! on \a control's first parameter.
    void resolvePositions(const BaseWidget &control);
    //! "label:value" for every level, in order.
    QStringList describe() const;

    /*!
        Appends one entry per level to \a menu, behind a separator when the
        menu already holds entries, and remembers which action stands for
        which value until the next call.
    */
    void addToMenu(QMenu *menu);
    //! The value text of \a action when it is one of the level entries added last.
    bool valueOf(const QAction *action, QString *value) const;
    //! When \a action is a level entry, sends its value text to \a control's first parameter (kind 1); true then.
    bool sendChoice(const QAction *action, BaseWidget &control) const;

private:
    QVector<Level> m_levels;
    bool m_positionsAsked = false;
    QHash<const QAction *, QString> m_actions;
};

#endif
