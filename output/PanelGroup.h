#pragma once

#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class OutputTextEdit;
class PanelGroupTabBar;
class QComboBox;
class QStackedWidget;

// The output panel: a one-tab bar reading "OUTPUT", the verbosity choice, the buttons for
// writing the output to a log and for clearing it, and the output pane below.
class PanelGroup : public QWidget
{
    Q_OBJECT

public:
    PanelGroup(KeyBindings* keyBindings, QWidget* parent = nullptr);

    OutputTextEdit* GetOutputTextEdit() const { return outputTextEdit; }

    void OutputAppendText(const QString& text);
    void OutputClearAll();
    void SetEchoAllCommandsEnabled(bool enabled);
    void SetNormalVerbosity();
    void SetMinimalVerbosity();
    // The index of the verbosity choice: 0 "Echo All", 1 "Normal", 2 "Minimal".
    int GetVebosityIndex() const;
    void ApplyPreferences();
    void UpdateTabsAndSpaces();
    void UpdateFont();
    void UpdateBackgroundColor();
    void UpdateFontsAndColors();
    void UpdateKeyBindings();

signals:
    void EchoAllCommandsChanged();
    void WriteToFileUpdated(bool enabled);
    void IncreaseOutputFontSizeRequested();
    void DecreaseOutputFontSizeRequested();
    void ReceivedFocus();

public slots:
    void OnOutputTypeChanged(int index);
    void OnReceivedFocus();
    void OnIncreaseOutputFontSizeRequested();
    void OnDecreaseOutputFontSizeRequested();
    void ToggleWriteToFile();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void InitializeOutputTypeCmb();
    bool AskStopWriteToFile();
    void StartWriteToFile();

    KeyBindings* keyBindings;
    PanelGroupTabBar* tabBar = nullptr;
    QStackedWidget* stack = nullptr;
    OutputTextEdit* outputTextEdit = nullptr;
    QComboBox* outputTypeCmb = nullptr;
    FlatButton* writeToFileBtn = nullptr;
    FlatButton* clearBtn = nullptr;
};
