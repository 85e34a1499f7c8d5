#pragma once

#include "core/WhisperModel.h"

#include <QAbstractButton>
#include <QWidget>

class AppModel;
class ModelStore;
class QLabel;
class QProgressBar;
class QToolButton;

// The radio mark of a model row: a ring, with a dot when the model is the chosen one.
class RadioMark : public QAbstractButton {
    Q_OBJECT

public:
    explicit RadioMark(QWidget *parent = nullptr);
    void setLook(bool selected, bool active);
    bool isSelectedMark() const { return m_selected; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_selected = false;
    bool m_active = false;
};

// One speech model of the catalogue, against the model store: choose it, download it
// (and see why a download failed, and try again), delete it.
class ModelRow : public QWidget {
    Q_OBJECT

public:
    enum class State { downloading, installed, available };

    ModelRow(AppModel &app, const WhisperModel &model, QWidget *parent = nullptr);

    const WhisperModel &model() const { return m_model; }
    State state() const;

    // A click on the row: chooses the model when it is installed, else nothing.
    void choose();
    // Deletes the model file; a chosen model hands the choice to the first installed one.
    void deleteModel();

    // The first catalogue model that is installed, or "small-q5_1" when none is.
    static QString firstInstalled(const ModelStore &store);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void restyle();
    void refresh();

    AppModel &m_app;
    ModelStore &m_store;
    WhisperModel m_model;

    RadioMark *m_radio = nullptr;
    QLabel *m_title = nullptr;
    QProgressBar *m_progress = nullptr;
    QLabel *m_note = nullptr;
    QToolButton *m_trash = nullptr;
    QToolButton *m_load = nullptr;

    QWidget *m_failureLine = nullptr;
    QLabel *m_failure = nullptr;
    QToolButton *m_retry = nullptr;
};

// All catalogue models as rows on a quiet rounded surface.
class ModelList : public QWidget {
    Q_OBJECT

public:
    explicit ModelList(AppModel &app, QWidget *parent = nullptr);
    QList<ModelRow *> rows() const { return m_rows; }

private:
    QList<ModelRow *> m_rows;
};
