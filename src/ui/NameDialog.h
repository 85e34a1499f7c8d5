#pragma once

#include <QString>

#include <functional>

class QWidget;

// Asks for a new name without holding up the event loop: `done` gets the text when the
// user confirms, and nothing happens on cancel.
namespace NameDialog {

void ask(QWidget *parent, const QString &title, const QString &label, const QString &current,
         std::function<void(const QString &name)> done);

} // namespace NameDialog
