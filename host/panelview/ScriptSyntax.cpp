#include "ScriptSyntax.h"

#include <QMetaEnum>

#include <cmath>

namespace ScriptSyntax {

bool tokenize(const QString &line, QStringList *tokens, QString *error)
{
    tokens->clear();
    QString current;
    bool inToken = false;
    bool quoted = false;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (quoted) {
            if (c == QLatin1Char('\\') && i + 1 < line.size()
                && (line.at(i + 1) == QLatin1Char('"') || line.at(i + 1) == QLatin1Char('\\'))) {
                current += line.at(++i);
            } else if (c == QLatin1Char('"')) {
                quoted = false;
            } else {
                current += c;
            }
            continue;
        }
        if (c == QLatin1Char('#'))
            break;
        if (c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r')) {
            if (inToken) {
                tokens->append(current);
                current.clear();
                inToken = false;
            }
            continue;
        }
        inToken = true;
        if (c == QLatin1Char('"'))
            quoted = true;
        else
            current += c;
    }
    if (quoted) {
        *error = QStringLiteral("unterminated quoted text");
        return false;
    }
    if (inToken)
        tokens->append(current);
    return true;
}

bool parseModifiers(const QString &text, Qt::KeyboardModifiers *modifiers)
{
    Qt::KeyboardModifiers m = Qt::NoModifier;
    if (text != QLatin1String("none")) {
        for (const QString &part : text.split(QLatin1Char('+'))) {
            if (part == QLatin1String("ctrl"))
                m |= Qt::ControlModifier;
            else if (part == QLatin1String("shift"))
                m |= Qt::ShiftModifier;
            else if (part == QLatin1String("alt"))
                m |= Qt::AltModifier;
            else
                return false;
        }
    }
    *modifiers = m;
    return true;
}

bool parseButton(const QString &text, Qt::MouseButton *button)
{
    if (text == QLatin1String("left"))
        *button = Qt::LeftButton;
    else if (text == QLatin1String("right"))
        *button = Qt::RightButton;
    else if (text == QLatin1String("middle"))
        *button = Qt::MiddleButton;
    else
        return false;
    return true;
}

static QString textOfKey(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return QStringLiteral("\r");
    case Qt::Key_Tab: return QStringLiteral("\t");
    case Qt::Key_Escape: return QStringLiteral("\x1b");
    case Qt::Key_Backspace: return QStringLiteral("\b");
    case Qt::Key_Delete: return QStringLiteral("\x7f");
    }
    if (key >= 0x20 && key <= 0xff)
        return QChar(key).toLower();
    return QString();
}

bool parseKey(const QString &name, int *key, QString *text)
{
    if (name.isEmpty())
        return false;
    const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
    bool ok = false;
    const int value = keys.keyToValue(("Key_" + name).toLatin1().constData(), &ok);
    if (!ok)
        return false;
    *key = value;
    *text = textOfKey(value);
    return true;
}

void keyForCharacter(QChar c, int *key, QString *text)
{
    *text = QString(c);
    if (c == QLatin1Char('\n')) {
        *key = Qt::Key_Return;
        *text = QStringLiteral("\r");
    } else if (c.unicode() >= 0x20 && c.unicode() <= 0xff) {
        *key = c.toUpper().unicode();
    } else {
        *key = Qt::Key_unknown;
    }
}

bool parseInt(const QString &text, int *value)
{
    bool ok = false;
    const int v = text.toInt(&ok);
    if (ok)
        *value = v;
    return ok;
}

bool parseNumber(const QString &text, double *value)
{
    bool ok = false;
    const double v = text.toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return false;
    *value = v;
    return true;
}

} // namespace ScriptSyntax
