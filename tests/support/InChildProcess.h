#ifndef CORVANE_TESTS_INCHILDPROCESS_H
#define CORVANE_TESTS_INCHILDPROCESS_H

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QtTest>

/*
    Runs the current test function (and data row) again in a child process
    and checks that it passed there; the child runs the test itself.

    For tests of bounds guards: without the guard, an out-of-range read
    asserts in a Debug build but may crash or read garbage in a release
    build. In a child either way ends as a clean failure of this test.
*/
#define CORVANE_RUN_IN_CHILD_PROCESS()                                                                     \
    do {                                                                                                   \
        if (!qEnvironmentVariableIsSet("CORVANE_TEST_CHILD")) {                                            \
            QString function = QString::fromLatin1(QTest::currentTestFunction());                          \
            if (QTest::currentDataTag())                                                                   \
                function += QLatin1Char(':') + QString::fromLatin1(QTest::currentDataTag());               \
            QProcess child;                                                                                \
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();                           \
            env.insert(QStringLiteral("CORVANE_TEST_CHILD"), QStringLiteral("1"));                         \
            child.setProcessEnvironment(env);                                                              \
            child.setProcessChannelMode(QProcess::MergedChannels);                                         \
            child.start(QCoreApplication::applicationFilePath(), {function});                              \
            QVERIFY2(child.waitForFinished(60000), qPrintable(child.errorString()));                       \
            QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0,                  \
                     child.readAll().right(2000).constData());                                             \
            return;                                                                                        \
        }                                                                                                  \
    } while (false)

#endif
