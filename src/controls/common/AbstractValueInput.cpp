#include "controls/common/AbstractValueInput.h"

#include <limits>

int AbstractValueInput::dragPositionAt(int coordinate) const
{
    if (m_policy.followsPointer)
        return coordinate;
    // In 64 bits: coordinates come from the pointer and need not stay small.
    const qint64 position = qint64(m_drag.startPosition) + m_drag.startCoordinate - coordinate;
    return boundDragPosition(int(qBound<qint64>(std::numeric_limits<int>::min(), position, std::numeric_limits<int>::max())));
}

int AbstractValueInput::stepOfKey(int key) const
{
    switch (key) {
    case Qt::Key_Up:
        return 1;
    case Qt::Key_Down:
        return -1;
    default:
        return 0;
    }
}

void AbstractValueInput::beginDrag(int index, int coordinate, int startPosition)
{
    abortDrag();
    if (index < 0)
        return;
    m_drag.index = index;
    m_drag.startCoordinate = m_policy.shortStart ? int(qint16(coordinate)) : coordinate;
    m_drag.startPosition = startPosition;
    m_drag.moved = false;
    gestureStarted();
}

void AbstractValueInput::dragTo(int coordinate, bool held)
{
    if (!isDragging())
        return;
    const bool atStart = coordinate == m_drag.startCoordinate;
    bool send = false;
    switch (m_policy.pressPoint) {
    case PressPoint::Sends:
        // Any move counts, even one back to the press point; the release
        // only confirms what a move sent.
        if (held)
            m_drag.moved = true;
        send = m_drag.moved;
        break;
    case PressPoint::SendsAfterLeaving:
        m_drag.moved = m_drag.moved || !atStart;
        send = m_drag.moved;
        break;
    case PressPoint::Silent:
        send = !atStart;
        break;
    }
    if (send)
        sendDragPosition(dragPositionAt(coordinate), held);
}

void AbstractValueInput::finishDrag(int coordinate)
{
    if (!isDragging())
        return;
    dragTo(coordinate, false);
    endDrag();
}

void AbstractValueInput::abortDrag()
{
    if (isDragging())
        endDrag();
}

void AbstractValueInput::endDrag()
{
    // The start stays readable after the drag.
    m_drag.index = -1;
    m_drag.moved = false;
    gestureEnded();
}
