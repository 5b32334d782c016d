#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtTest/QtTest>

// The widgets open their icons by name from the resources; a missing, misnamed or broken file
// would only show as an empty button, so every name is checked here.
class TestIcons : public QObject
{
    Q_OBJECT

private:
    static QStringList IconNames()
    {
        return QStringLiteral(
                   "clear_field close close_all close_white collapse delete_highlight error execute "
                   "execute_all execute_line explorer_view find_in_selection folder_closed folder_opened "
                   "list_code_editors match_case match_word mel mel_global_proc mel_global_var "
                   "mel_icon mel_proc modified new_file new_folder next python python_class "
                   "python_class_method python_class_variable python_icon python_import python_main "
                   "python_method python_static_method python_variable quick_help_view refresh "
                   "regular_expression replace replace_all save_all save_script_to_shelf "
                   "scroll_left scroll_right search_filters search_view settings sort-by-alphabet "
                   "text text_icon view_collapsed view_expanded warning write_to_file")
            .split(QLatin1Char(' '));
    }

    static QString IconPath(const QString& name) { return QStringLiteral(":/bq2_icons/%1.png").arg(name); }

    static QPair<int, int> AlphaRange(const QImage& image)
    {
        QPair<int, int> range(255, 0);
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
                range = {qMin(range.first, image.pixelColor(x, y).alpha()),
                         qMax(range.second, image.pixelColor(x, y).alpha())};
        }
        return range;
    }

    QTemporaryDir appDir;

private slots:
    void initTestCase()
    {
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        QCOMPARE(IconNames().removeDuplicates(), 0);
        // A file the code does not know by name is dead weight or a misspelt icon: as every known name
        // loads (iconLoads), as many files as names leaves room for no other.
        QCOMPARE(QDir(QStringLiteral(":/bq2_icons")).entryList(QDir::Files).size(), IconNames().size());
    }

    void iconLoads_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : IconNames())
            QTest::newRow(qPrintable(name)) << name;
    }

    // Square, one canvas size for all so that they scale alike, drawn on a transparent ground, and
    // still solid somewhere when scaled down to the smallest size the widgets draw it at.
    void iconLoads()
    {
        QFETCH(QString, name);
        const QPixmap pixmap(IconPath(name));
        QVERIFY2(!pixmap.isNull(), qPrintable(IconPath(name)));
        QCOMPARE(pixmap.size(), QSize(32, 32));

        const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
        QVERIFY(image.hasAlphaChannel());
        QVERIFY2(AlphaRange(image).second == 255, "no opaque pixel");
        QVERIFY2(AlphaRange(image).first == 0, "no transparent ground");

        // The tab's close cross and modified mark are drawn at 8 pixels; no other icon below 10.
        const int size = name == QLatin1String("close_white") || name == QLatin1String("modified") ? 8 : 10;
        const QImage small = image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QVERIFY2(AlphaRange(small).second >= 192, "fades away when drawn small");
    }
};

QTEST_MAIN(TestIcons)
#include "tst_Icons.moc"
