#include "accessibility/AccessibleControl.h"
#include "core/FocusRing.h"
#include "core/ReadOut.h"

#include <QCoreApplication>

// Runs when the library is loaded into a running application, or when the
// application object of a program linked with it is created.
static void installControlServices()
{
    Accessibility::install();
    FocusRing::install();
    ReadOut::install();
}
Q_COREAPP_STARTUP_FUNCTION(installControlServices)
