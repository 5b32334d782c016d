// The host's vocabulary: Maya's real command names answer melInfo, whatIs, exists and maya.cmds,
// whether or not the host can run the command.
#include "HostFixture.h"
#include "HostPython.h"
#include "HostVocabulary.h"
#include "MelText.h"
#include "plugin/MayaUtil.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <QtTest/QTest>

#include <memory>

class TestHostVocabulary : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin());
    }

    void cleanupTestCase() { fixture.reset(); }

    void listIsMayasOwn()
    {
        const QStringList& names = HostVocabulary::MayaCommands();
        QVERIFY(names.size() > 1000);
        QVERIFY(std::is_sorted(names.cbegin(), names.cend()));
        QVERIFY(HostVocabulary::IsMayaCommand(QStringLiteral("xform")));
        QVERIFY(!HostVocabulary::IsMayaCommand(QStringLiteral("polycube")));
    }

    void melAnswers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("whatIs");
        QTest::addColumn<bool>("inMelInfo");
        QTest::newRow("known by name only") << "polyCube"
                                            << "Command" << true;
        QTest::newRow("run by the host as well") << "workspaceControl"
                                                 << "Command" << true;
        QTest::newRow("no such command") << "polyCubeX"
                                         << "Unknown" << false;
    }

    void melAnswers()
    {
        QFETCH(QString, name);
        QFETCH(QString, whatIs);
        QFETCH(bool, inMelInfo);
        QCOMPARE(fixture->MelString(QStringLiteral("whatIs %1").arg(name)), whatIs);
        const QStringList all = MelText::Array(QStringLiteral("melInfo"));
        QCOMPARE(all.count(name), inMelInfo ? 1 : 0);
        int exists = -1;
        QVERIFY(MayaUtil::ExecuteMelIntResult(QStringLiteral("exists %1").arg(name), exists));
        QCOMPARE(exists, inMelInfo ? 1 : 0);
    }

    void runningOneFailsClearly()
    {
        fixture->ClearMessages();
        QVERIFY(!fixture->Mel(QStringLiteral("polyCube -n \"box\"")));
        QVERIFY(fixture->HasMessageContaining(
            QStringLiteral("polyCube: this host knows the command by name only")));
        // A procedure of that name is the user's to define, and runs.
        QVERIFY(fixture->Mel(QStringLiteral("global proc string polySphere() { return \"mine\"; }")));
        QCOMPARE(fixture->MelString(QStringLiteral("polySphere")), QStringLiteral("mine"));
    }

    void pythonCmdsExposesEveryName()
    {
        int result = 0;
        QVERIFY(HostPython::Execute(QStringLiteral("import maya.cmds as cmds"), false));
        QVERIFY(HostPython::EvaluateInt(QStringLiteral("int(callable(cmds.polyCube))"), result));
        QCOMPARE(result, 1);
        QVERIFY(HostPython::EvaluateInt(QStringLiteral("int(hasattr(cmds, 'polyCubeX'))"), result));
        QCOMPARE(result, 0);
        QVERIFY(
            HostPython::Execute(QStringLiteral("try:\n    cmds.polyCube()\n    bq2_error = ''\n"
                                               "except RuntimeError as error:\n    bq2_error = str(error)\n"),
                                false));
        QString error;
        QVERIFY(HostPython::EvaluateString(QStringLiteral("bq2_error"), error));
        QVERIFY2(error.contains(QStringLiteral("by name only")), qPrintable(error));
    }
};

QTEST_MAIN(TestHostVocabulary)
#include "tst_HostVocabulary.moc"
