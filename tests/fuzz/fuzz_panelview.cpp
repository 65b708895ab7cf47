// panelview's --check over a description and its script parser over the
// same bytes read as script lines.
#include "PanelChecker.h"
#include "ScriptSyntax.h"

#include <QStringList>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size > (1 << 20))
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    static const PanelChecker checker(
        [](const QString &type, QStringList *tags) {
            if (type == QLatin1String("NumberBox")) {
                *tags = QStringList{"Rect", "Address", "AddressList", "Font", "FontSize", "Focus"};
                return PanelChecker::KnownTypeWithTags;
            }
            return type.startsWith(QLatin1Char('P')) ? PanelChecker::KnownType : PanelChecker::UnknownType;
        },
        [](const QString &model) { return model == QLatin1String("Vela8"); });
    const QList<PanelChecker::Finding> findings = checker.check(bytes);
    PanelChecker::format(QStringLiteral("fuzz.xml"), findings);

    const QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QStringList tokens;
        QString error;
        if (!ScriptSyntax::tokenize(line, &tokens, &error))
            continue;
        for (const QString &t : qAsConst(tokens)) {
            Qt::KeyboardModifiers modifiers;
            Qt::MouseButton button;
            int key = 0;
            QString text;
            int whole = 0;
            double number = 0;
            ScriptSyntax::parseModifiers(t, &modifiers);
            ScriptSyntax::parseButton(t, &button);
            ScriptSyntax::parseKey(t, &key, &text);
            ScriptSyntax::parseInt(t, &whole);
            ScriptSyntax::parseNumber(t, &number);
            if (!t.isEmpty())
                ScriptSyntax::keyForCharacter(t.at(0), &key, &text);
        }
    }
    return 0;
}
