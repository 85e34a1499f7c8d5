#pragma once

#include <QString>

// The desktop's file manager.
namespace FileManager {

// Shows the file or folder at `path` selected in its parent folder, through the
// freedesktop FileManager1 interface; where no file manager answers there, opens the
// folder itself, or the parent folder of a file.
void reveal(const QString &path);

} // namespace FileManager
