// Patches one bundle for ever, as the application does when corrections, a speaker text
// or a refinement level are saved; the fault test kills it at a random moment.
#include "storage/BundleStore.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 2)
        return 2;
    const QString bundle = QString::fromLocal8Bit(argv[1]);
    for (qint64 n = 1;; ++n) {
        // Lengths that vary, so that a torn write would show in the document's size.
        const QString filler(int(n % 7) * 4096, u'x');
        Correction rule;
        rule.from = QStringLiteral("wort%1").arg(n);
        rule.to = filler;
        BundleStore::saveCorrections(bundle, {rule});
        BundleStore::saveSpeakerText(bundle, QStringLiteral("Sprecher 1: %1 %2").arg(n).arg(filler));
        BundleStore::saveRefined(bundle, 1 + n % 3, QStringLiteral("Stufe %1 %2").arg(n).arg(filler));
    }
}
