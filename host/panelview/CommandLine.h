#ifndef CORVANE_HOST_COMMANDLINE_H
#define CORVANE_HOST_COMMANDLINE_H

#include <QString>
#include <QStringList>

/*!
    \class CommandLine
    \brief panelview's options, read with QCommandLineParser.

    An option is declared once in CommandLine.cpp's option table and read
    back in parse(); --help lists the table.
*/
struct CommandLine
{
    QString panel;
    QString screenshot;
    QString script;
    QString plugin;
    double zoom = 1.0;
    bool check = false;
    bool listTypes = false;
    bool trace = false;
    bool help = false;
    bool version = false;

    //! Reads the arguments (without the program name); false with \a error set when they make no sense.
    bool parse(const QStringList &arguments, QString *error);
    //! Whether this run needs no display (everything but the window).
    bool headless() const { return check || listTypes || !screenshot.isEmpty() || !script.isEmpty(); }
    //! Whether this run only prints what panelview is (--help, --version).
    bool aboutOnly() const { return help || version; }
    //! The --help text.
    static QString usage();
    //! What follows an option error on standard error.
    static QString helpHint();
};

#endif
