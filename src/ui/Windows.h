#pragma once

class AppModel;
class QDialog;
class QWidget;

// Where each window, sheet and screen of other parts of the interface comes from: one
// function each, so that the main window only knows these names.

// Sheets over the main window; each clears its flag of AppModel when it closes.
QDialog *makeSettingsSheet(AppModel &app, QWidget *parent);
QDialog *makeRecordSheet(AppModel &app, QWidget *parent);
QDialog *makeOnboardingWizard(AppModel &app, QWidget *parent);

// The contents of the windows "about" and "help".
QWidget *makeAboutView(AppModel &app, QWidget *parent);
QWidget *makeHelpView(AppModel &app, QWidget *parent);

// Screens of the detail area: the result of `current`, and the live interview.
QWidget *makeResultView(AppModel &app, QWidget *parent);
QWidget *makeInterviewView(AppModel &app, QWidget *parent);

// The link row of the drop zone; none while links cannot be imported.
QWidget *makeLinkField(AppModel &app, QWidget *parent);
