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
    bool listLong = false;
    bool trace = false;
    bool help = false;
    bool version = false;
    // Panel authoring: --check --json, discovery, the schema, live reload.
    bool json = false;
    bool listModels = false;
    QString listParameters;
    QString describe;
    bool schema = false;
    bool watch = false;

    //! Reads the arguments (without the program name); false with \a error set when they make no sense.
    bool parse(const QStringList &arguments, QString *error);
    //! Whether this run needs no display (everything but the window).
    bool headless() const { return check || listTypes || !screenshot.isEmpty() || !script.isEmpty() || discovery(); }
    //! Whether this run only describes the plug-in or the devices and needs no panel.
    bool discovery() const { return listModels || !listParameters.isEmpty() || !describe.isEmpty() || schema; }
    //! Whether this run only prints what panelview is (--help, --version).
    bool aboutOnly() const { return help || version; }
    //! The --help text.
    static QString usage();
    //! What follows an option error on standard error.
    static QString helpHint();
};

#endif
