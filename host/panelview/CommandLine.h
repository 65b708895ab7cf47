#ifndef CORVANE_HOST_COMMANDLINE_H
#define CORVANE_HOST_COMMANDLINE_H

#include <QString>
#include <QStringList>

struct CommandLine
{
    QString panel;
    QString screenshot;
    QString script;
    QString plugin;
    double zoom = 1.0;
    bool check = false;
    bool listTypes = false;
    bool describe = false;
    bool trace = false;
    bool help = false;

    //! Reads the arguments (without the program name); false with \a error set when they make no sense.
    bool parse(const QStringList &arguments, QString *error);
    //! Whether this run needs no display (everything but the window).
    bool headless() const { return check || listTypes || !screenshot.isEmpty() || !script.isEmpty(); }
    static QString usage();
};

#endif
