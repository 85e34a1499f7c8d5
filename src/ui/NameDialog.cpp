#include "ui/NameDialog.h"

#include <QInputDialog>
#include <QLineEdit>

void NameDialog::ask(QWidget *parent, const QString &title, const QString &label, const QString &current,
                     std::function<void(const QString &name)> done)
{
    auto *dialog = new QInputDialog(parent);
    dialog->setObjectName(QStringLiteral("nameDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setLabelText(label);
    dialog->setTextValue(current);
    dialog->setMinimumWidth(360);
    QObject::connect(dialog, &QInputDialog::textValueSelected, dialog, std::move(done));
    dialog->open();
}
