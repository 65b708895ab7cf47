#include "JsonWriter.h"
#include "ScriptSyntax.h"

#include <QtTest>

using namespace ScriptSyntax;

class tst_ScriptSyntax : public QObject
{
    Q_OBJECT

private slots:
    void tokenize_data();
    void tokenize();
    void modifiers_data();
    void modifiers();
    void keys_data();
    void keys();
    void jsonNumbers_data();
    void jsonNumbers();
};

void tst_ScriptSyntax::tokenize_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("tokens");
    QTest::addColumn<bool>("ok");
    QTest::newRow("blanks and tabs") << "click  knob\t3 4 " << QStringList{"click", "knob", "3", "4"} << true;
    QTest::newRow("quoted blanks") << "set g 0 ui_prm_val=0.5 \"ui_prm_str=-6.0 dB\""
                                   << QStringList{"set", "g", "0", "ui_prm_val=0.5", "ui_prm_str=-6.0 dB"} << true;
    QTest::newRow("escapes") << R"(echo "say \"hi\" \\ ok")" << QStringList{"echo", R"(say "hi" \ ok)"} << true;
    QTest::newRow("other backslashes stay") << R"(echo "a\nb")" << QStringList{"echo", R"(a\nb)"} << true;
    QTest::newRow("quotes inside a token") << "set g 0 ui_prm_str=\"-6.0 dB\"" << QStringList{"set", "g", "0", "ui_prm_str=-6.0 dB"} << true;
    QTest::newRow("empty quoted token") << "echo \"\"" << QStringList{"echo", ""} << true;
    QTest::newRow("comment") << "wait 10 # let the timer fire" << QStringList{"wait", "10"} << true;
    QTest::newRow("comment line") << "   # nothing" << QStringList() << true;
    QTest::newRow("hash in quotes") << "echo \"#1\" # c" << QStringList{"echo", "#1"} << true;
    QTest::newRow("hash glued to a token") << "echo a#b c" << QStringList{"echo", "a"} << true;
    QTest::newRow("unterminated") << "echo \"open" << QStringList() << false;
    QTest::newRow("escaped closing quote") << R"(echo "a\")" << QStringList() << false;
}

void tst_ScriptSyntax::tokenize()
{
    QFETCH(QString, line);
    QFETCH(QStringList, tokens);
    QFETCH(bool, ok);
    QStringList result;
    QString error;
    QCOMPARE(ScriptSyntax::tokenize(line, &result, &error), ok);
    if (ok)
        QCOMPARE(result, tokens);
    else
        QVERIFY(!error.isEmpty());
}

void tst_ScriptSyntax::modifiers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("none") << "none" << true << int(Qt::NoModifier);
    QTest::newRow("ctrl") << "ctrl" << true << int(Qt::ControlModifier);
    QTest::newRow("ctrl+shift") << "ctrl+shift" << true << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("all three") << "alt+shift+ctrl" << true << int(Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier);
    QTest::newRow("capitalised") << "Ctrl" << false << 0;
    QTest::newRow("trailing plus") << "ctrl+" << false << 0;
    QTest::newRow("a button is not a modifier") << "left" << false << 0;
}

void tst_ScriptSyntax::modifiers()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(int, modifiers);
    Qt::KeyboardModifiers m = Qt::MetaModifier;
    QCOMPARE(parseModifiers(text, &m), ok);
    if (ok)
        QCOMPARE(int(m), modifiers);
}

void tst_ScriptSyntax::keys_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("Up") << "Up" << true << int(Qt::Key_Up) << "";
    QTest::newRow("Return") << "Return" << true << int(Qt::Key_Return) << "\r";
    QTest::newRow("Enter") << "Enter" << true << int(Qt::Key_Enter) << "\r";
    QTest::newRow("Escape") << "Escape" << true << int(Qt::Key_Escape) << "\x1b";
    QTest::newRow("Space") << "Space" << true << int(Qt::Key_Space) << " ";
    QTest::newRow("letter") << "A" << true << int(Qt::Key_A) << "a";
    QTest::newRow("digit") << "7" << true << int(Qt::Key_7) << "7";
    QTest::newRow("with prefix") << "Key_Up" << false << 0 << "";
    QTest::newRow("lower case") << "up" << false << 0 << "";
    QTest::newRow("empty") << "" << false << 0 << "";
}

void tst_ScriptSyntax::keys()
{
    QFETCH(QString, name);
    QFETCH(bool, ok);
    QFETCH(int, key);
    QFETCH(QString, text);
    int k = -1;
    QString t;
    QCOMPARE(parseKey(name, &k, &t), ok);
    if (ok) {
        QCOMPARE(k, key);
        QCOMPARE(t, text);
    }
}

// Numbers in panelview's output: whole numbers as integers, others with 12
// significant digits.
void tst_ScriptSyntax::jsonNumbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 42.0 << "42";
    QTest::newRow("negative whole") << -3.0 << "-3";
    QTest::newRow("third") << 1.0 / 3.0 << "0.333333333333";
    QTest::newRow("seven digits") << 1.2345678 << "1.2345678";
    QTest::newRow("twelve digits") << 0.123456789012 << "0.123456789012";
    QTest::newRow("thirteenth digit rounds") << 2.0000000000004 << "2";
    QTest::newRow("not finite") << qInf() << "null";
}

void tst_ScriptSyntax::jsonNumbers()
{
    QFETCH(double, value);
    QTEST(Json::number(value), "text");
}

QTEST_GUILESS_MAIN(tst_ScriptSyntax)
#include "tst_scriptsyntax.moc"
