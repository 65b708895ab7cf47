#ifndef CORVANE_HOST_SCRIPTSYNTAX_H
#define CORVANE_HOST_SCRIPTSYNTAX_H

#include <QString>
#include <QStringList>
#include <Qt>

/*
    The lexical side of panelview scripts: one command a line, blanks
    between tokens, "#" to the end of the line is a comment, double quotes
    around text with blanks (\" and \\ inside).
*/
namespace ScriptSyntax {

//! Splits \a line into tokens; false with \a error set for an unterminated quote.
bool tokenize(const QString &line, QStringList *tokens, QString *error);

//! "none" or a "+"-joined set of "ctrl", "shift", "alt".
bool parseModifiers(const QString &text, Qt::KeyboardModifiers *modifiers);
//! "left", "right" or "middle".
bool parseButton(const QString &text, Qt::MouseButton *button);
//! A Qt key name without "Key_" ("Up", "Return", "A"); \a text is what the key types, if anything.
bool parseKey(const QString &name, int *key, QString *text);
//! The key and text of typing \a c.
void keyForCharacter(QChar c, int *key, QString *text);

bool parseInt(const QString &text, int *value);
bool parseNumber(const QString &text, double *value);

} // namespace ScriptSyntax

#endif
