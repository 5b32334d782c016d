#include "output/PanelGroup.h"

#include "output/OutputTextEdit.h"
#include "output/PanelGroupTabBar.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "widgets/FlatButton.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

namespace
{
const QString WRITE_TO_FILE_TITLE = QStringLiteral("Write Output to File");
const QString WRITE_TO_FILE_TIP = QStringLiteral("Write to File");

// The folder of the last log, kept for the life of the process.
QString& LastLogDirectory()
{
    static QString directory;
    return directory;
}
} // namespace

PanelGroup::PanelGroup(KeyBindings* keyBindings, QWidget* parent) : QWidget(parent), keyBindings(keyBindings)
{
    setAutoFillBackground(true);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
}

void PanelGroup::CreateWidgets()
{
    const QColor background =
        ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT, false).background().color();
    tabBar = new PanelGroupTabBar(this);
    tabBar->SetActiveTabBackgroundColor(background);
    tabBar->SetHoverTabBackgroundColor(QColor(255, 255, 255, 80));
    tabBar->SetTabsMoveable(false);
    tabBar->SetTabsClosable(false);
    tabBar->SetUnderlineEnabled(true);
    tabBar->InsertTab(0, QStringLiteral("OUTPUT"));

    stack = new QStackedWidget(this);
    outputTextEdit = new OutputTextEdit(keyBindings, stack);
    stack->addWidget(outputTextEdit);

    outputTypeCmb = new QComboBox(this);
    outputTypeCmb->setObjectName(QStringLiteral("outputTypeCmb"));
    InitializeOutputTypeCmb();

    writeToFileBtn = new FlatButton(this);
    writeToFileBtn->setObjectName(QStringLiteral("writeToFileBtn"));
    writeToFileBtn->SetSize(18, 18);
    writeToFileBtn->SetImage(QImage(QStringLiteral(":/bq2_icons/write_to_file.png")), 6);
    writeToFileBtn->setToolTip(WRITE_TO_FILE_TIP);

    clearBtn = new FlatButton(this);
    clearBtn->setObjectName(QStringLiteral("clearBtn"));
    clearBtn->SetSize(18, 18);
    clearBtn->SetImage(QImage(QStringLiteral(":/bq2_icons/clear_field.png")), 6);
    clearBtn->setToolTip(QStringLiteral("Clear"));
}

void PanelGroup::CreateLayout()
{
    auto* barLayout = new QHBoxLayout();
    barLayout->setContentsMargins(0, 0, 0, 0);
    barLayout->setSpacing(4);
    barLayout->addWidget(tabBar);
    barLayout->addWidget(outputTypeCmb);
    barLayout->addWidget(writeToFileBtn);
    barLayout->addWidget(clearBtn);

    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addLayout(barLayout);
    mainLayout->addWidget(stack);
}

void PanelGroup::CreateConnections()
{
    connect(outputTypeCmb, SIGNAL(currentIndexChanged(int)), this, SLOT(OnOutputTypeChanged(int)));
    connect(writeToFileBtn, SIGNAL(clicked()), this, SLOT(ToggleWriteToFile()));
    connect(clearBtn, SIGNAL(clicked()), outputTextEdit, SLOT(ClearAll()));
    connect(outputTextEdit, SIGNAL(IncreaseFontSizeRequested()), this,
            SLOT(OnIncreaseOutputFontSizeRequested()));
    connect(outputTextEdit, SIGNAL(DecreaseFontSizeRequested()), this,
            SLOT(OnDecreaseOutputFontSizeRequested()));
    connect(outputTextEdit, SIGNAL(ReceivedFocus()), this, SLOT(OnReceivedFocus()));
}

void PanelGroup::InitializeOutputTypeCmb()
{
    outputTypeCmb->setToolTip(QStringLiteral("Output Verbosity"));
    outputTypeCmb->addItems(
        {QStringLiteral("Echo All"), QStringLiteral("Normal"), QStringLiteral("Minimal")});
    if (MayaUtil::EchoAllCommandsEnabled())
        outputTypeCmb->setCurrentIndex(0);
    else
        outputTypeCmb->setCurrentIndex(Settings::outputMinimalTrace ? 2 : 1);
}

// ---------------------------------------------------------------------------------------------
// Output

void PanelGroup::OutputAppendText(const QString& text)
{
    outputTextEdit->AppendText(text);
}

void PanelGroup::OutputClearAll()
{
    outputTextEdit->ClearAll();
}

void PanelGroup::ApplyPreferences()
{
    outputTextEdit->SetMaximumBlockCount(Settings::outputBufferSize);
}

void PanelGroup::UpdateTabsAndSpaces()
{
    outputTextEdit->UpdateTextOptions();
}

void PanelGroup::UpdateFont()
{
    outputTextEdit->UpdateFont();
}

void PanelGroup::UpdateFontsAndColors()
{
    outputTextEdit->UpdateFontsAndColors();
    UpdateBackgroundColor();
}

void PanelGroup::UpdateBackgroundColor()
{
    const QColor background =
        ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT, false).background().color();
    QPalette p = palette();
    p.setBrush(QPalette::All, QPalette::Window, background);
    setPalette(p);
    tabBar->SetBackgroundColor(background);
}

void PanelGroup::UpdateKeyBindings()
{
    QString tip = WRITE_TO_FILE_TIP;
    const QKeySequence sequence =
        keyBindings ? keyBindings->GetShortcut(KeySequenceType::ToggleWriteOutputToFile) : QKeySequence();
    if (!sequence.isEmpty())
        tip = QStringLiteral("%1 (%2)").arg(tip, sequence.toString(QKeySequence::NativeText));
    writeToFileBtn->setToolTip(tip);
}

// ---------------------------------------------------------------------------------------------
// Verbosity: echo is held by the host, minimal output by the setting.

void PanelGroup::OnOutputTypeChanged(int index)
{
    Settings::outputMinimalTrace = index == 2;
    MayaUtil::SetEchoAllCommandsEnabled(index == 0);
    emit EchoAllCommandsChanged();
}

void PanelGroup::SetEchoAllCommandsEnabled(bool enabled)
{
    if (enabled)
        outputTypeCmb->setCurrentIndex(0);
    else
        outputTypeCmb->setCurrentIndex(Settings::outputMinimalTrace ? 2 : 1);
}

void PanelGroup::SetNormalVerbosity()
{
    outputTypeCmb->setCurrentIndex(1);
}

void PanelGroup::SetMinimalVerbosity()
{
    outputTypeCmb->setCurrentIndex(2);
}

int PanelGroup::GetVebosityIndex() const
{
    return outputTypeCmb->currentIndex();
}

// ---------------------------------------------------------------------------------------------
// Relays

void PanelGroup::OnReceivedFocus()
{
    emit ReceivedFocus();
}

void PanelGroup::OnIncreaseOutputFontSizeRequested()
{
    emit IncreaseOutputFontSizeRequested();
}

void PanelGroup::OnDecreaseOutputFontSizeRequested()
{
    emit DecreaseOutputFontSizeRequested();
}

// ---------------------------------------------------------------------------------------------
// Log file

void PanelGroup::ToggleWriteToFile()
{
    if (outputTextEdit->IsWriteToFileActive())
    {
        if (AskStopWriteToFile())
        {
            outputTextEdit->EndWriteToFile();
            writeToFileBtn->SetChecked(false);
            writeToFileBtn->setToolTip(WRITE_TO_FILE_TIP);
        }
        emit WriteToFileUpdated(outputTextEdit->IsWriteToFileActive());
        return;
    }
    StartWriteToFile();
}

bool PanelGroup::AskStopWriteToFile()
{
    QMessageBox box(QMessageBox::Question, WRITE_TO_FILE_TITLE,
                    QStringLiteral("Stop writing output to file?"), QMessageBox::Yes | QMessageBox::No, this);
    return box.exec() == QMessageBox::Yes;
}

void PanelGroup::StartWriteToFile()
{
    const QString logFilter = QStringLiteral("LOG (*.log)");
    const QString filter = QStringLiteral("%1;;%2").arg(logFilter, QStringLiteral("All Files(*.*)"));
    QString selectedFilter;
    QString path =
        QFileDialog::getSaveFileName(this, WRITE_TO_FILE_TITLE, LastLogDirectory(), filter, &selectedFilter);
    if (path.isEmpty())
    {
        emit WriteToFileUpdated(false);
        return;
    }
    LastLogDirectory() = QFileInfo(path).absolutePath();
    if (selectedFilter.startsWith(QLatin1String("LOG")) &&
        !path.endsWith(QLatin1String(".log"), Qt::CaseInsensitive))
        path += QStringLiteral(".log");
    if (outputTextEdit->BeginWriteToFile(path))
    {
        writeToFileBtn->SetChecked(true);
        writeToFileBtn->setToolTip(QStringLiteral("Stop writing to file"));
    }
    emit WriteToFileUpdated(outputTextEdit->IsWriteToFileActive());
}
