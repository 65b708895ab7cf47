#ifndef CORVANE_PANELFACTORYLOADER_H
#define CORVANE_PANELFACTORYLOADER_H

#include <QString>

class IPanelFactory;

/*!
    Loads the host's panel plug-in from the application directory ("Panel.dll"
    on Windows, the platform's own library name elsewhere) and returns its
    panel factory; null when the file is missing or offers no IPanelFactory.
*/
IPanelFactory *loadPanelFactory();

//! The path the panel plug-in is loaded from.
QString panelFactoryPath();

#endif
