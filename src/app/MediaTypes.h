#pragma once

#include <QStringList>

// The files the open panel offers: audio and video.
namespace MediaTypes {

// The extensions that are offered besides the audio and video types of the MIME
// database, lower case, without the dot.
const QStringList &extensions();

// The file-name patterns ("*.m4a") of every audio and video type the MIME database
// knows, and of the types it knows for `extensions()`; an extension without a type is
// left out. Sorted, each once.
QStringList patterns();

} // namespace MediaTypes
