#include "shell/RecoveryStore.h"

#include "editor/CodeEditor.h"
#include "plugin/Logger.h"
#include "settings/Settings.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>

namespace
{
const char* const COPY_PREFIX = "recovery_";
const char* const COPY_SUFFIX = ".json";
} // namespace

RecoveryStore::RecoveryStore(QObject* parent) : QObject(parent)
{
    // Single shot and restarted by each change: nothing runs while the user does not type.
    writeTimer.setSingleShot(true);
    writeTimer.setInterval(WRITE_DELAY_MS);
    connect(&writeTimer, SIGNAL(timeout()), this, SLOT(OnWriteTimeout()));
}

QString RecoveryStore::GetDirectoryPath()
{
    const QString buffers = Settings::GetInternalBufferDirectoryPath();
    const QString path = QFileInfo(buffers).absolutePath() + QStringLiteral("/recovery");
    if (!QDir(path).exists())
        QDir().mkpath(path);
    return path;
}

QString RecoveryStore::CopyPath(const QString& filePath)
{
    // One copy per buffer, named after its path.
    const QByteArray hash = QCryptographicHash::hash(filePath.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QStringLiteral("%1/%2%3%4")
        .arg(GetDirectoryPath(), QLatin1String(COPY_PREFIX), QString::fromLatin1(hash.left(16)),
             QLatin1String(COPY_SUFFIX));
}

void RecoveryStore::Watch(CodeEditor* codeEditor)
{
    if (codeEditor)
        connect(codeEditor, SIGNAL(textChanged()), this, SLOT(OnTextChanged()), Qt::UniqueConnection);
}

void RecoveryStore::OnTextChanged()
{
    auto* codeEditor = qobject_cast<CodeEditor*>(sender());
    if (!codeEditor)
        return;
    if (!pending.contains(codeEditor))
        pending.append(codeEditor);
    writeTimer.start();
}

void RecoveryStore::OnWriteTimeout()
{
    WritePending();
}

void RecoveryStore::WritePending()
{
    writeTimer.stop();
    const QList<QPointer<CodeEditor>> editors = pending;
    pending.clear();
    for (const QPointer<CodeEditor>& codeEditor : editors)
    {
        if (!codeEditor)
            continue;
        // Undone back to what is on disk: nothing to keep.
        if (codeEditor->IsModified())
            Write(codeEditor);
        else
            Remove(codeEditor->GetFilePath());
    }
}

bool RecoveryStore::Write(CodeEditor* codeEditor)
{
    const CodeEditorProperties properties = codeEditor->GetProperties();
    QJsonObject object;
    object.insert(QStringLiteral("type"), static_cast<int>(properties.type));
    object.insert(QStringLiteral("language"), static_cast<int>(properties.language));
    object.insert(QStringLiteral("filePath"), properties.filePath);
    object.insert(QStringLiteral("label"), properties.label);
    object.insert(QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODate));
    object.insert(QStringLiteral("text"), codeEditor->GetTextForSave());
    const QString path = CopyPath(properties.filePath);
    // Renamed into place when complete: a crash during the write leaves the previous copy.
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(object).toJson(QJsonDocument::Compact);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (!written && !failureReported)
    {
        Logger::Error(QStringLiteral("Failed to write recovery copy: %1 (%2)").arg(path, file.errorString()));
        failureReported = true;
    }
    if (written)
        failureReported = false;
    return written;
}

void RecoveryStore::Remove(const QString& filePath)
{
    const QString path = CopyPath(filePath);
    if (QFile::exists(path))
        QFile::remove(path);
}

bool RecoveryStore::Has(const QString& filePath) const
{
    return QFile::exists(CopyPath(filePath));
}

QList<RecoveryStore::Entry> RecoveryStore::ReadAll() const
{
    QList<Entry> entries;
    const QDir directory(GetDirectoryPath());
    const QStringList names = directory.entryList(
        {QStringLiteral("%1*%2").arg(QLatin1String(COPY_PREFIX), QLatin1String(COPY_SUFFIX))}, QDir::Files,
        QDir::Time);
    for (const QString& name : names)
    {
        QFile file(directory.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
        const int type = object.value(QStringLiteral("type")).toInt(-1);
        const int language = object.value(QStringLiteral("language")).toInt(-1);
        const QString filePath = object.value(QStringLiteral("filePath")).toString();
        if (type < 0 || type > 1 || language < 0 || language > 2 || filePath.isEmpty() ||
            !object.value(QStringLiteral("text")).isString())
            continue;
        Entry entry;
        entry.copyPath = file.fileName();
        entry.properties.type = static_cast<CodeEditorType>(type);
        entry.properties.language = static_cast<CodeEditorLanguage>(language);
        entry.properties.filePath = filePath;
        entry.properties.label = object.value(QStringLiteral("label")).toString();
        entry.time = QDateTime::fromString(object.value(QStringLiteral("time")).toString(), Qt::ISODate);
        entry.text = object.value(QStringLiteral("text")).toString();
        entries.append(entry);
    }
    return entries;
}
