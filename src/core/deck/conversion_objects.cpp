// Sets up the log and the application around one conversion, and tears them down in an order in which nothing loses
// what it still asks.
#include "core/deck/conversion_objects.h"

#include "config/file_replacer.h"
#include "config/user_preferences.h"
#include "core/deck/simulation.h"

namespace NBrenmark {

CConversionObjects::CConversionObjects()
{
    addLogModule(&logger);
    userPreferences(); // made on this thread: the writers' workers ask it, and its making has no lock
    ready = initialiseApplication(applicationState());
    if (!ready)
        return;
    roles.emplace(*simulation().configuration);
    miners.emplace(*simulation().configuration);
}

CConversionObjects::~CConversionObjects()
{
    if (ready)
        simulation().close(false);
    waitForCopies();
    flushLogModules();
    shutdownApplication(applicationState());
    clearLogModules();
    miners.reset();
    roles.reset();
    releaseUserPreferences();
}

} // namespace NBrenmark
