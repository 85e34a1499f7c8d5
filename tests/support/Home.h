#pragma once

#include <QString>

// Points HOME and XDG_DATA_HOME at a fresh, empty folder beside the watched temporary
// folder, so that neither the code under test nor its child programs touch the user's
// own folders. Returns the new home folder.
QString useThrowawayHome();
