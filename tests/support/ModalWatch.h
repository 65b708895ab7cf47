#ifndef CORVANE_TESTS_MODALWATCH_H
#define CORVANE_TESTS_MODALWATCH_H

#include <QApplication>
#include <QObject>
#include <QTimer>
#include <QWidget>

/*
    Notices a modal loop: a zero timer armed at construction fires inside
    any exec() the code under test runs, closes the modal widget so the test
    goes on, and remembers that the call blocked.
*/
class ModalWatch : public QObject
{
public:
    ModalWatch()
    {
        QTimer::singleShot(0, this, [this] {
            if (QWidget *modal = QApplication::activeModalWidget()) {
                blocked = true;
                modal->close();
            }
        });
    }

    bool blocked = false;
};

#endif
