// Screens' controller tests run without a GUI application: the widgets they hold must still draw their
// icons and measure their badges there.

#include "FakePlatform.h"
#include "widgets/BadgeBarButtonItem.h"
#include "widgets/GroupedRadioButton.h"

#include <QTest>

using namespace ekinora;
using namespace ekinora::widgets;

class WidgetsWithoutGuiTest : public QObject {
    Q_OBJECT
private slots:
    void radioAndBadgeWorkWithoutAGuiApplication() {
        testing::FakePlatform fake;
        GroupedRadioButton radio(QStringLiteral("radioETK1"));
        radio.tap();
        QVERIFY(GroupedRadioButton::isGeneratedIcon(radio.iconSelected()));
        QCOMPARE(radio.iconSelected().pixelColor(7, 7).alpha(), 255);

        BadgeBarButtonItem bell(QStringLiteral("btnNotification"));
        bell.setBadgeValue(QStringLiteral("12"));
        const QRectF frame = bell.existingBadge()->frame();
        QVERIFY(!bell.existingBadge()->isHidden());
        QVERIFY(frame.width() >= frame.height());
        QVERIFY(frame.height() >= 8 + 6);
    }
};

QTEST_GUILESS_MAIN(WidgetsWithoutGuiTest)
#include "tst_widgets_without_gui.moc"
