#pragma once

#include <QCoreApplication>

// The one lookup of interface texts: the German text is the key and the default.
// lupdate reads `Tr::tr("…")` into the catalogues' context "Sagwerk".
class Tr {
    Q_DECLARE_TR_FUNCTIONS(Sagwerk)
};
