// The weather screens and the profile as a farmer uses them; the dealer lands on his messages and
// changes his shop data.

#include "EndToEnd.h"

using namespace ekinora;
using namespace ekinora::testing;

class WeatherProfileEndToEnd : public EndToEnd {
    Q_OBJECT
private slots:
    void init() { startService(); }
    void cleanup() { stopAll(); }

    void farmerReadsTheWeekKeepsFavouritesAndMovesCounty() {
        startApp();
        signInAs("farmer");
        QTRY_VERIFY_WITH_TIMEOUT(!textOf("lblWeatherLocation").isEmpty(), 8000);
        QCOMPARE(textOf("lblWeatherLocation"), QStringLiteral("Çumra"));

        openWeek();
        saveScreenshot(window(), QStringLiteral("weather-week"));

        // A day: today's hours; three favourites kept by taking away the condition and the rain.
        openDay();
        saveScreenshot(window(), QStringLiteral("weather-day"));
        avoidTheFirstRows();
        tap("btnFavList");
        QTRY_COMPARE(cells("WeatherCell").size(), 5);
        tapValueRow(0);
        tapValueRow(2);
        QTRY_COMPARE(itemsNamed(rowOf(cells("WeatherCell"), 2), "imageFav").value(0)->property("name").toString(), QStringLiteral("favEmpty"));
        shoot(QStringLiteral("weather-choosing"), 200);
        tap("btnFavList");
        QTRY_COMPARE(cells("WeatherCell").size(), 3);
        QCOMPARE(text(rowOf(cells("WeatherCell"), 0), "labelInfo"), QStringLiteral("Sıcaklık"));

        restartApp();
        QTRY_VERIFY_WITH_TIMEOUT(!textOf("lblWeatherLocation").isEmpty(), 8000);
        openWeek();
        openDay();
        QTRY_COMPARE(cells("WeatherCell").size(), 3);
        QStringList labels;
        for (int row = 0; row < 3; ++row) labels << text(rowOf(cells("WeatherCell"), row), "labelInfo");
        QCOMPARE(labels, (QStringList{"Sıcaklık", "Rüzgar hızı", "Rüzgar yönü"}));
        saveScreenshot(window(), QStringLiteral("weather-favourites"));

        // Back to the home, then the profile: another county of the same city, saved; the home's
        // weather follows it.
        for (int i = 0; i < 2; ++i) {
            tap("backButton");
            QTest::qWait(400);
        }
        openMenu(QStringLiteral("Profilim"), "ProfileViewController");
        QTRY_COMPARE_WITH_TIMEOUT(textOf("txtCounty"), QStringLiteral("Çumra"), 5000);
        QCOMPARE(textOf("txtPhone"), QStringLiteral("05321000101"));
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapUntilShown("btnCounty", "dropDownList", 3000);
        QTRY_COMPARE(itemNamed(window(), "dropDownList")->height(), 250.0);
        QQuickItem* other = nullptr;
        for (QQuickItem* row : itemsNamed(itemNamed(window(), "dropDownList"), "Cell")) {
            const QString title = row->property("title").toString();
            if (!other && !title.isEmpty() && title != QStringLiteral("Çumra")) other = row;
        }
        QVERIFY(other);
        const QString county = other->property("title").toString();
        tapUntilGone(other, "dropDownList");
        QTRY_COMPARE(textOf("txtCounty"), county);
        typeInto("txtMail", "hasan.dogru@ornek.com.tr", true);
        saveScreenshot(window(), QStringLiteral("profile-form"));
        tap("updateButton");
        QTRY_COMPARE_WITH_TIMEOUT(alertText(), QStringLiteral("Profil bilgileriniz güncellendi."), 5000);
        saveScreenshot(window(), QStringLiteral("profile-saved"));
        dismissAlert();

        openMenu(QStringLiteral("Anasayfa"));
        QTRY_COMPARE_WITH_TIMEOUT(textOf("lblWeatherLocation"), county, 8000);
    }

    void dealerLandsOnMessagesAndChangesHisShop() {
        startApp();
        signInAs("dealer");
        QTRY_COMPARE(topIdentifier(), QStringLiteral("messageVC"));
        QCOMPARE(content()->topTitle(), QStringLiteral("Mesajlarım"));
        QVERIFY(!app->platform().defaults().stringForKey("token").isEmpty());
        openMenu(QStringLiteral("Bayi Bilgileri"), "DealerViewController");
        QTRY_COMPARE_WITH_TIMEOUT(textOf("txtDealerName"), QStringLiteral("Erdem Tarım Zirai İlaç ve Tohumculuk"), 5000);
        QCOMPARE(textOf("txtDealerTaxNumber"), QStringLiteral("4830127965"));
        typeInto("txtDealerName", "Erdem Tarim Ceyhan Subesi", true);
        saveScreenshot(window(), QStringLiteral("dealer-form"));
        tap("updateButton");
        QTRY_COMPARE_WITH_TIMEOUT(alertText(), QStringLiteral("Bayi bilgileriniz güncellendi."), 5000);
        dismissAlert();

        // Read again: the service kept it.
        openMenu(QStringLiteral("Bayi Bilgileri"));
        QTRY_COMPARE_WITH_TIMEOUT(textOf("txtDealerName"), QStringLiteral("Erdem Tarim Ceyhan Subesi"), 5000);
    }

private:
    void openWeek() {
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tapUntilShown("openWeatherDetail", "WeatherDetailViewController");
        QTRY_VERIFY_WITH_TIMEOUT(cells("WeatherCell").size() >= 5, 5000);
        QCOMPARE(content()->topTitle(), QStringLiteral("Hava Durumu"));
        QVERIFY(text(rowOf(cells("WeatherCell"), 0), "labelTempMax").endsWith(QStringLiteral("°C")));
        QTRY_VERIFY_WITH_TIMEOUT(itemsNamed(rowOf(cells("WeatherCell"), 0), "imageCondition").value(0)->property("status").toInt() == 1, 5000);
    }
    void openDay() {
        tapUntilShown(rowOf(cells("WeatherCell"), 1), "WeatherDetailInfoViewController");
        QTRY_VERIFY_WITH_TIMEOUT(text(nullptr, "labelHour", true).endsWith(QStringLiteral(":00")), 5000);
        QTest::qWait(300);
    }
    // The value row numbered like the chosen hour can't be toggled: choose a later hour when needed.
    void avoidTheFirstRows() {
        const int hour = QDateTime::currentDateTime().time().hour();
        if (hour > 4) return;
        QQuickItem* later = nullptr;
        for (QQuickItem* cell : cells("WeatherHourCell"))
            if (!later && text(cell, "labelHour").toInt() >= 5 && cell->isVisible()) later = cell;
        QVERIFY(later);
        tapItem(window(), later);
        QTest::qWait(300);
    }
    void tapValueRow(int row) {
        tapItem(window(), rowOf(cells("WeatherCell"), row));
        QTest::qWait(150);
    }

    // A cell by the row of its delegate.
    static QQuickItem* rowOf(const QList<QQuickItem*>& list, int row) {
        for (QQuickItem* cell : list) {
            QQuickItem* slot = cell->property("row").isValid() ? cell : cell->parentItem();
            if (slot && slot->property("row").toInt() == row) return cell;
        }
        return nullptr;
    }
    // The text of a named label within an item; with chosen, the chosen hour's label.
    QString text(QQuickItem* within, const char* name, bool chosen = false) const {
        const auto found = itemsNamed(within ? within : window()->contentItem(), name);
        for (QQuickItem* item : found) {
            const QString t = item->property("text").toString();
            if (!chosen || t.endsWith(QStringLiteral(":00"))) return t;
        }
        return QString();
    }
};

EKINORA_GUI_TEST_MAIN(WeatherProfileEndToEnd)
#include "tst_weather_profile_e2e.moc"
