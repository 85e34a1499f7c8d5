#pragma once

#include <QComboBox>

class AppModel;

// The pop-up of the AI models, by their display names, bound to the active model.
class AIModelPicker : public QComboBox {
    Q_OBJECT

public:
    AIModelPicker(AppModel &app, QWidget *parent = nullptr);

private:
    void refresh();

    AppModel &m_app;
};
