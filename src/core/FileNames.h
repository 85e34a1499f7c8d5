#pragma once

#include <QString>

// The extension of a file name or path is what follows the last dot of its last
// component, unless that dot opens the component (a hidden name has no extension).
namespace FileNames {

// The path without its extension and without trailing slashes.
QString deletingPathExtension(const QString &path);

// The extension without its dot; empty when there is none.
QString pathExtension(const QString &path);

} // namespace FileNames
