// The widgets' rules on the fake platform: the drop-down's order of events, its frames and row
// pictures; the radio group's linking and selection rules and its drawn icons; the slider's timer and
// wrap on the manual clock; the badge's hiding, size, bounce and removal; the flow layout's snapping.

#include "FakePlatform.h"
#include "widgets/BadgeBarButtonItem.h"
#include "widgets/DropDownList.h"
#include "widgets/GroupedRadioButton.h"
#include "widgets/ProductDetailFlowLayout.h"
#include "widgets/Slider.h"

#include <QSignalSpy>
#include <QTest>
#include <limits>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;
using namespace ekinora::widgets;

namespace {

// A screen that opens drop-downs and notes what it sees when one reports back.
class PickingScreen : public QObject {
    Q_OBJECT
public:
    QStringList seen;

public slots:
    void dropDownListDelegateMethod(QObject* sender) {
        auto* list = qobject_cast<DropDownList*>(sender);
        seen << QStringLiteral("tag %1, open %2, index %3, title %4")
                    .arg(list->tag())
                    .arg(list->isOpen())
                    .arg(list->selectedIndex())
                    .arg(list->btnSender()->title());
    }
};

class ScreenWithoutDelegateMethod : public QObject {
    Q_OBJECT
};

// A screen's action on a radio button, noting the button's state when it runs.
class ConsentScreen : public QObject {
    Q_OBJECT
public:
    QList<bool> states;

public slots:
    void radioTapped(QObject* sender) { states << qobject_cast<GroupedRadioButton*>(sender)->isSelected(); }
};

QList<GroupedRadioButton*> group(std::initializer_list<GroupedRadioButton*> buttons) { return buttons; }

QColor pixelAt(const QImage& image, double x, double y) {
    const double scale = image.devicePixelRatio();
    return image.pixelColor(int(x * scale), int(y * scale));
}

// A drawn pixel of that colour, allowing for the partial cover of an antialiased edge.
bool drawnIn(const QColor& pixel, const QColor& colour) {
    return pixel.alpha() > 64 && qAbs(pixel.red() - colour.red()) <= 3 && qAbs(pixel.green() - colour.green()) <= 3 &&
           qAbs(pixel.blue() - colour.blue()) <= 3;
}

} // namespace

class WidgetsTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;

private slots:
    void init() { fake = new FakePlatform; }
    void cleanup() {
        delete fake;
        GroupedRadioButton::groupModifing(false);
    }

    // Drop-down list

    void pickingARowClosesTheListTitlesTheButtonThenTellsTheDelegate() {
        QObject screenView;
        auto* btnCity = new Button(QStringLiteral("btnCity"), &screenView);
        btnCity->setTitle(QStringLiteral("İl Seçiniz"));
        PickingScreen screen;
        auto* list = new DropDownList;
        list->setDelegate(&screen);
        list->setTag(101);
        list->showDropDown(btnCity, 250, {"Adana", "Konya", "Manisa"}, {}, QStringLiteral("down"));

        QCOMPARE(list->parent(), &screenView); // it lives in the button's superview
        QVERIFY(list->isOpen());
        list->didSelectRow(1);
        QCOMPARE(screen.seen, QStringList{"tag 101, open 0, index 1, title Konya"});
    }

    void framesFollowTheDirection_data() {
        QTest::addColumn<QString>("direction");
        QTest::addColumn<QRectF>("open");
        QTest::addColumn<QRectF>("closed");
        QTest::addColumn<QPointF>("shadow");
        QTest::addColumn<bool>("flipped");
        QTest::newRow("up") << "up" << QRectF(20, -150, 160, 250) << QRectF(20, 100, 160, 0) << QPointF(-5, -5) << false;
        QTest::newRow("down") << "down" << QRectF(20, 140, 160, 250) << QRectF(20, 140, 160, 0) << QPointF(-5, 5) << true;
        QTest::newRow("anything else leaves the frame unset") << "left" << QRectF() << QRectF() << QPointF(0, -3) << false;
    }
    void framesFollowTheDirection() {
        QFETCH(QString, direction);
        QFETCH(QRectF, open);
        QFETCH(QRectF, closed);
        QFETCH(QPointF, shadow);
        QFETCH(bool, flipped);
        Button button(QStringLiteral("btnProduct"));
        DropDownList list;
        list.setSenderFrame(QRectF(20, 100, 160, 40));
        list.showDropDown(&button, 250, {"a"}, {}, direction);
        QCOMPARE(list.frame(), open);
        QCOMPARE(list.shadowOffset(), shadow);
        QCOMPARE(list.senderImageFlipped(), flipped);
        list.hideDropDown(&button);
        QCOMPARE(list.frame(), closed);
        QVERIFY(!list.senderImageFlipped());
    }

    void rowPicturesOnlyWhenThereAreNoMoreThanTitles() {
        Button button;
        DropDownList list;
        list.showDropDown(&button, 100, {"a", "b", "c"}, {}, QStringLiteral("down"));
        // No pictures: rows without any.
        QCOMPARE(list.imageForRow(0), QString());
        // As many as titles: each row has its own.
        list.showDropDown(&button, 100, {"a", "b", "c"}, {"p0", "p1", "p2"}, QStringLiteral("down"));
        QCOMPARE(list.imageForRow(2), QStringLiteral("p2"));
        // Fewer: as far as they reach.
        list.showDropDown(&button, 100, {"a", "b", "c"}, {"p0"}, QStringLiteral("down"));
        QCOMPARE(list.imageForRow(0), QStringLiteral("p0"));
        QCOMPARE(list.imageForRow(1), QString());
        // More pictures than titles: none at all.
        list.showDropDown(&button, 100, {"a", "b"}, {"p0", "p1", "p2"}, QStringLiteral("down"));
        QCOMPARE(list.imageForRow(0), QString());
    }

    void aDelegateWithoutTheMethodStopsTheApplication() {
        Button button;
        DropDownList list;
        list.showDropDown(&button, 100, {"a", "b"}, {}, QStringLiteral("down"));
        list.didSelectRow(0); // no delegate: nothing happens beyond the pick
        QCOMPARE(button.title(), QStringLiteral("a"));

        ScreenWithoutDelegateMethod screen;
        list.setDelegate(&screen);
        QVERIFY_THROWS_EXCEPTION(FatalStop, list.didSelectRow(1));
        QCOMPARE(fake->endings, QList<int>{Application::FaultExitCode});
    }

    // Grouped radio button

    void oneAssignmentLinksTheWholeGroup() {
        GroupedRadioButton a(QStringLiteral("radioETK1")), b(QStringLiteral("radioETK2")), c(QStringLiteral("radioETK3"));
        a.setOtherButtons(group({&b, &c}));
        QCOMPARE(a.otherButtons(), group({&b, &c}));
        QCOMPARE(b.otherButtons(), group({&c, &a}));
        QCOMPARE(c.otherButtons(), group({&b, &a}));
        QVERIFY(!GroupedRadioButton::isGroupModifing());

        // Group settings spread from any member.
        c.setAnimationDuration(0.1);
        QCOMPARE(a.animationDuration(), 0.1);
        QCOMPARE(b.animationDuration(), 0.1);

        // A button that goes leaves the group.
        {
            GroupedRadioButton d;
            a.setOtherButtons(group({&b, &c, &d}));
            QCOMPARE(b.otherButtons().size(), 3);
        }
        QCOMPARE(b.otherButtons(), group({&c, &a}));
    }

    void singleSelectionKeepsOneAndMultipleTogglesEach() {
        GroupedRadioButton a, b, c;
        a.setOtherButtons(group({&b, &c}));
        ConsentScreen screen;
        b.addTarget(&screen, QStringLiteral("radioTapped"));

        a.tap();
        QVERIFY(a.isSelected());
        b.tap();
        QVERIFY(b.isSelected());
        QVERIFY(!a.isSelected());
        QVERIFY(!c.isSelected());
        b.tap(); // no switching off
        QVERIFY(b.isSelected());
        QCOMPARE(screen.states, QList<bool>({true, true})); // the screen sees the new state

        QCOMPARE(a.selectedButton(), &b);
        QCOMPARE(c.selectedButton(), &b);
        QCOMPARE(a.selectedButtons(), group({&b}));

        // Setting in code follows the same rule.
        c.setSelected(true);
        QCOMPARE(b.selectedButton(), &c);
        c.setSelected(false);
        QCOMPARE(a.selectedButton(), nullptr);

        // Multiple selection, set on any member, holds for the group; each button toggles on its own.
        b.setMultipleSelectionEnabled(true);
        QVERIFY(a.isMultipleSelectionEnabled() && c.isMultipleSelectionEnabled());

        c.tap();
        a.tap();
        QVERIFY(a.isSelected() && c.isSelected());
        c.tap();
        QVERIFY(!c.isSelected());
        QVERIFY(a.isSelected());
        b.tap();
        QCOMPARE(a.selectedButton(), nullptr);
        QCOMPARE(b.selectedButtons(), group({&b, &a}));
        QCOMPARE(c.selectedButtons(), group({&b, &a}));
    }

    void iconFadesOnlyWhereItShould() {
        GroupedRadioButton a, b;
        a.setOtherButtons(group({&b}));
        QSignalSpy fades(&a, &GroupedRadioButton::iconAnimationAdded);

        a.setSelected(true); // a change between generated icons
        QCOMPARE(fades.size(), 1);
        QCOMPARE(fades.last(), QVariantList({false, 0.3}));
        a.setSelected(true); // no change in single selection
        QCOMPARE(fades.size(), 1);

        a.setMultipleSelectionEnabled(true);
        a.setSelected(true); // multiple selection fades on every set
        QCOMPARE(fades.size(), 2);
        QCOMPARE(fades.last(), QVariantList({true, 0.3}));

        a.setMultipleSelectionEnabled(false);
        QImage own(10, 10, QImage::Format_ARGB32);
        own.fill(Qt::red);
        a.setIcon(own); // a picture of the layout's: no fade
        a.setSelected(false);
        QCOMPARE(fades.size(), 2);

        QSignalSpy fadesOfB(&b, &GroupedRadioButton::iconAnimationAdded);
        b.setAnimationDuration(0);
        b.setSelected(true);
        QCOMPARE(fadesOfB.size(), 0);
    }

    void generatedIconsFollowTheTitleColours() {
        GroupedRadioButton radio;
        radio.setTitleColor(QColor(51, 51, 51));
        radio.setTitleColor(QColor(120, 185, 48), GroupedRadioButton::Selected);
        const QImage normal = radio.icon(), selected = radio.iconSelected();
        QVERIFY(GroupedRadioButton::isGeneratedIcon(normal));
        QVERIFY(GroupedRadioButton::isGeneratedIcon(selected));
        QCOMPARE(normal.deviceIndependentSize(), QSizeF(15, 15));

        // The ring in the title colour, empty inside; the selected one has a dot of half the side.
        QVERIFY(drawnIn(pixelAt(normal, 0.5, 7.5), QColor(51, 51, 51)));
        QCOMPARE(pixelAt(normal, 7.5, 7.5).alpha(), 0);
        // With no colour of its own, the selected-highlighted state takes the selected one.
        QCOMPARE(pixelAt(selected, 7.5, 7.5).rgb(), QColor(120, 185, 48).rgb());
        QCOMPARE(pixelAt(selected, 2.5, 7.5).alpha(), 0);
        QCOMPARE(radio.titleColorForState(GroupedRadioButton::SelectedHighlighted), QColor(120, 185, 48));

        // Own stroke and dot colours and a square shape.
        radio.setIconColor(Qt::blue);
        radio.setIndicatorColor(Qt::red);
        radio.setIconSquare(true);
        QCOMPARE(pixelAt(radio.iconSelected(), 0.5, 0.5).rgb(), QColor(Qt::blue).rgb()); // a corner
        QCOMPARE(pixelAt(radio.iconSelected(), 7.5, 7.5).rgb(), QColor(Qt::red).rgb());

        // A picture of the layout's stays through a redraw; the generated one is drawn again.
        QImage own(30, 30, QImage::Format_ARGB32);
        own.fill(Qt::green);
        radio.setIcon(own);
        radio.setIconSize(20);
        QCOMPARE(radio.icon(), own);
        QCOMPARE(radio.iconSelected().deviceIndependentSize(), QSizeF(20, 20));
        QVERIFY(radio.iconSource().startsWith(QStringLiteral("data:image/png;base64,")));
    }

    void highlightedColourServesWhenTheSelectedOneIsMissing() {
        GroupedRadioButton radio;
        radio.setTitleColor(Qt::black);
        radio.setTitleColor(Qt::black, GroupedRadioButton::Selected); // same as normal: not usable
        radio.setTitleColor(Qt::darkGreen, GroupedRadioButton::Highlighted);
        QCOMPARE(radio.titleColorForState(GroupedRadioButton::SelectedHighlighted), QColor(Qt::darkGreen));
        QCOMPARE(radio.titleColorForState(GroupedRadioButton::Selected), QColor(Qt::black));
    }

    void titleInsetsFollowTheLayoutDirection() {
        GroupedRadioButton radio;
        QCOMPARE(radio.titleEdgeInsets(), (EdgeInsets{0, 5, 0, 0}));
        radio.setMarginWidth(8);
        radio.setRightToLeft(true);
        QCOMPARE(radio.titleEdgeInsets(), (EdgeInsets{0, 0, 0, 8}));
        QCOMPARE(radio.contentHorizontalAlignment(), int(GroupedRadioButton::AlignRight));
    }

    // Slider

    void slidesAdvanceEveryFiveSecondsAndWrap() {
        Slider slider;
        slider.setSize(QSizeF(390, 200));
        slider.setSlides({"http://svc.test/e/1.jpg", "http://svc.test/e/2.jpg", "http://svc.test/e/3.jpg"});
        slider.setupSliderView();
        ScrollView* scroll = slider.slider();
        QSignalSpy animated(scroll, &ScrollView::offsetAnimated);

        QCOMPARE(slider.pagger()->numberOfPages(), 3);
        QCOMPARE(scroll->contentSize(), QSizeF(1170, 200));
        const QList<SlideImageView*> pages = scroll->imageViews();
        QCOMPARE(pages.size(), 3);
        QCOMPARE(pages.at(2)->frame(), QRectF(780, 0, 390, 200));
        QCOMPARE(pages.at(2)->imageUrl(), QUrl("http://svc.test/e/3.jpg"));
        QCOMPARE(pages.at(2)->image(), QStringLiteral("Property"));

        fake->clock->advance(4999);
        QCOMPARE(slider.pagger()->currentPage(), 0);
        fake->clock->advance(1);
        QCOMPARE(scroll->contentOffset(), QPointF(390, 0));
        QCOMPARE(slider.pagger()->currentPage(), 1);
        QCOMPARE(animated.last(), QVariantList{0.5});
        fake->clock->advance(5000);
        QCOMPARE(slider.pagger()->currentPage(), 2);
        fake->clock->advance(5000);
        QCOMPARE(scroll->contentOffset(), QPointF(0, 0));
        QCOMPARE(slider.pagger()->currentPage(), 0);
        QCOMPARE(animated.size(), 3);

        // A drag in between: the page is the whole part of offset over width, and the next move goes
        // one width on from where the user left it.
        scroll->userScroll(500, 0);
        QCOMPARE(slider.pagger()->currentPage(), 1);
        fake->clock->advance(5000);
        QCOMPARE(scroll->contentOffset(), QPointF(890, 0));
        QCOMPARE(slider.pagger()->currentPage(), 2);

        // Setting up again replaces the timer instead of adding one.
        slider.setupSliderView();
        QCOMPARE(fake->clock->pending(), 1);

        // A resize lays the pages out again.
        slider.setSize(QSizeF(300, 150));
        QCOMPARE(slider.slider()->frame(), QRectF(0, 0, 300, 150));
        QCOMPARE(slider.slider()->imageViews().at(1)->frame(), QRectF(300, 0, 300, 150));
        QCOMPARE(slider.slider()->contentSize(), QSizeF(900, 150));
    }

    void fewerThanTwoSlidesStartNoTimer() {
        Slider slider;
        slider.setSize(QSizeF(390, 200));
        slider.setSlides({"http://svc.test/e/1.jpg"});
        slider.setupSliderView();
        QCOMPARE(fake->clock->pending(), 0);
        QCOMPARE(slider.slider()->imageViews().size(), 1);

        slider.setSlides({});
        slider.setupSliderView();
        QCOMPARE(fake->clock->pending(), 0);
        QCOMPARE(slider.slider()->imageViews().size(), 0);

        // A timer from an earlier, longer list is left running; with one page it only goes back to 0.
        slider.setSlides({"a", "b"});
        slider.setupSliderView();
        slider.setSlides({"a"});
        slider.setupSliderView();
        QCOMPARE(fake->clock->pending(), 1);
        slider.slider()->userScroll(0, 0);
        fake->clock->advance(5000);
        QCOMPARE(slider.slider()->contentOffset(), QPointF(0, 0));
    }

    void aSliderInAScreenThatHasGoneKeepsTicking() {
        auto* screen = new QObject;
        QPointer<Slider> slider = new Slider(QStringLiteral("slider"), screen);
        slider->setSize(QSizeF(390, 200));
        slider->setSlides({"a", "b", "c"});
        slider->setupSliderView();
        delete screen;
        QVERIFY(slider);
        fake->clock->advance(5000);
        QCOMPARE(slider->pagger()->currentPage(), 1);
        QCOMPARE(fake->clock->pending() > 0, true);
    }

    // Badge

    void badgeHidingRules_data() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("hideAtZero");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("empty text") << "" << true << true;
        QTest::newRow("zero") << "0" << true << true;
        QTest::newRow("zero shown when not hidden at zero") << "0" << false << false;
        QTest::newRow("a count") << "7" << true << false;
        QTest::newRow("a long count") << "128" << true << false;
    }
    void badgeHidingRules() {
        QFETCH(QString, value);
        QFETCH(bool, hideAtZero);
        QFETCH(bool, hidden);
        BadgeBarButtonItem bell(QStringLiteral("btnNotification"));
        bell.setBadgeValue(QStringLiteral("3"));
        bell.setShouldHideBadgeAtZero(hideAtZero);
        bell.setBadgeValue(value);
        QCOMPARE(bell.badge()->isHidden(), hidden);
        if (!hidden) QCOMPARE(bell.badge()->text(), value);
    }

    void badgeIsMadeOnFirstUseAndSizedWithinItsLimits() {
        BadgeBarButtonItem bell;
        QVERIFY(!bell.existingBadge());
        bell.setViewWidth(48);
        bell.setBadgeValue(QStringLiteral("5"));
        BadgeLabel* badge = bell.existingBadge();
        QVERIFY(badge);
        QVERIFY(!badge->isHidden());
        QCOMPARE(bell.badgeOriginX(), 48 - 20 - 12.0);

        // At least the minimum high, at least as wide as high, the padding around.
        const QSizeF text = bell.badgeExpectedSize();
        QVERIFY(text.height() > 8);
        QCOMPARE(badge->frame(), QRectF(16, 0, qMax(text.width(), text.height()) + 6, text.height() + 6));
        QCOMPARE(badge->cornerRadius(), (text.height() + 6) / 2);
        QVERIFY(badge->clipsToBounds());
        bell.setBadgeValue(QStringLiteral("1250"));
        QVERIFY(badge->frame().width() > badge->frame().height());

        bell.setBadgeMinSize(40);
        QCOMPARE(badge->frame().size(), QSizeF(46, 46));
        bell.setBadgeOriginY(-4);
        QCOMPARE(badge->frame().y(), -4.0);
    }

    void badgeBouncesWhenTheShownValueChanges() {
        BadgeBarButtonItem bell;
        bell.setBadgeValue(QStringLiteral("3"));
        QSignalSpy bounces(&bell, &BadgeBarButtonItem::bounceAnimationAdded);
        bell.setBadgeValue(QStringLiteral("4"));
        QCOMPARE(bounces.size(), 1);
        bell.setBadgeValue(QStringLiteral("4"));
        QCOMPARE(bounces.size(), 1);
        bell.setShouldAnimateBadge(false);
        bell.setBadgeValue(QStringLiteral("5"));
        QCOMPARE(bounces.size(), 1);
        QCOMPARE(bell.badge()->text(), QStringLiteral("5"));
    }

    void removedBadgeShrinksThenGoes() {
        BadgeBarButtonItem bell;
        bell.setBadgeValue(QStringLiteral("3"));
        QPointer<BadgeLabel> old = bell.existingBadge();
        bell.removeBadge();
        QCOMPARE(old->scale(), 0.0);
        fake->clock->advance(199);
        QCOMPARE(bell.existingBadge(), old.data());
        fake->clock->advance(1);
        QVERIFY(!old);
        QVERIFY(!bell.existingBadge());
        // The same value again still runs the badge's rules, so a new label comes.
        bell.setBadgeValue(QStringLiteral("3"));
        QVERIFY(bell.existingBadge());
        QVERIFY(!bell.existingBadge()->isHidden());
        QCOMPARE(bell.existingBadge()->scale(), 1.0);
    }

    // Flow layout

    void aScrollEndsWithAnItemSixteenFromTheLeft_data() {
        QTest::addColumn<double>("proposed");
        QTest::addColumn<double>("expected");
        // Items at x = 16 + 91 i.
        QTest::newRow("nearest lies ahead") << 100.0 << 91.0;
        QTest::newRow("nearest lies behind") << 200.0 << 182.0;
        QTest::newRow("already in place") << 182.0 << 182.0;
        QTest::newRow("a tie keeps the first item") << 136.5 << 91.0;
        QTest::newRow("an item cut at the left edge counts") << 30.0 << 0.0;
    }
    void aScrollEndsWithAnItemSixteenFromTheLeft() {
        QFETCH(double, proposed);
        QFETCH(double, expected);
        ProductDetailFlowLayout layout;
        layout.setCollectionViewSize(QSizeF(390, 107));
        layout.setSectionItemCounts({12});
        const QPointF target = layout.targetContentOffsetForProposedContentOffset(QPointF(proposed, 3), QPointF(2.5, 0));
        QCOMPARE(target, QPointF(expected, 3));
    }

    void pagesOfOneItemPerSectionSnapToWholeWidths() {
        // The pest lists: one item a section, as wide as the collection less 32.
        ProductDetailFlowLayout layout;
        layout.setCollectionViewSize(QSizeF(358, 220));
        layout.setItemSize(QSizeF(358 - 32, 220 - 32));
        layout.setSectionInset(QMarginsF(16, 8, 16, 16));
        layout.setSectionItemCounts({1, 1, 1, 1});
        QCOMPARE(layout.frameForItem(2, 0), QRectF(2 * 358 + 16, 8, 326, 188));
        QCOMPARE(layout.collectionViewContentSize(), QSizeF(4 * 358, 220));
        QCOMPARE(layout.targetContentOffsetForProposedContentOffset(QPointF(500, 0), {}), QPointF(358, 0));
        QCOMPARE(layout.targetContentOffsetForProposedContentOffset(QPointF(560, 0), {}), QPointF(716, 0));
    }

    void withNoItemInViewTheLargestFloatIsAdded() {
        ProductDetailFlowLayout layout;
        layout.setCollectionViewSize(QSizeF(390, 107));
        layout.setSectionItemCounts({2});
        const QPointF target = layout.targetContentOffsetForProposedContentOffset(QPointF(1000, 0), {});
        QCOMPARE(target.x(), 1000.0 + double(std::numeric_limits<float>::max()));
    }
};

QTEST_MAIN(WidgetsTest)
#include "tst_widgets.moc"
