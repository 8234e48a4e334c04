// The widgets' arrangements in a real scene on the offscreen platform: the object contract (names,
// rows, visibility follows hidden, accessible names) and taps going through to the models.

#include "FakePlatform.h"
#include "QuickProbe.h"
#include "widgets/BadgeBarButtonItem.h"
#include "widgets/DropDownList.h"
#include "widgets/GroupedRadioButton.h"
#include "widgets/Slider.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <algorithm>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;
using namespace ekinora::widgets;

namespace {

const char* scene = R"(
import QtQuick
import Ekinora.Platform
import Ekinora.Widgets

Item {
    width: 390; height: 844
    PButton { id: cityButton; model: btnCity; x: 20; y: 100; width: 200; height: 44 }
    RadioButton { model: radioETK1; x: 20; y: 300; width: 340 }
    RadioButton { model: radioETK2; x: 20; y: 350; width: 340 }
    SliderView { model: slider; x: 0; y: 420; width: 390; height: 200 }
    BarButton { model: bell; x: 330; y: 0 }
    BarButton { model: plainItem; x: 270; y: 0 }
    DropDownListView { anchors.fill: parent; model: screen.dropDownCityCounty; senders: [cityButton] }
}
)";

// The screen side of a drop-down: it keeps the open list, and forgets it when a row is picked.
class CityScreen : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject* dropDownCityCounty READ dropDownCityCounty NOTIFY dropDownChanged)
public:
    QObject* dropDownCityCounty() const { return m_dropDown; }
    void open(DropDownList* list) {
        m_dropDown = list;
        emit dropDownChanged();
    }
    QStringList picked;

public slots:
    void dropDownListDelegateMethod(QObject* sender) {
        picked << qobject_cast<DropDownList*>(sender)->btnSender()->title();
        m_dropDown = nullptr; // rel
        emit dropDownChanged();
    }

signals:
    void dropDownChanged();

private:
    QObject* m_dropDown = nullptr;
};

} // namespace

class WidgetViewsTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;
    QQmlEngine* engine = nullptr;
    QQuickWindow* window = nullptr;
    QQuickItem* root = nullptr;
    QObject owner;
    Button* btnCity = nullptr;
    GroupedRadioButton* radioETK1 = nullptr;
    GroupedRadioButton* radioETK2 = nullptr;
    Slider* slider = nullptr;
    BadgeBarButtonItem* bell = nullptr;
    BarButtonItem* plainItem = nullptr;
    CityScreen* screen = nullptr;

    QQuickItem* named(const QString& name) { return itemNamed(window, name); }

private slots:
    void init() {
        fake = new FakePlatform;
        btnCity = new Button(QStringLiteral("btnCity"), &owner);
        btnCity->setTitle(QStringLiteral("İl Seçiniz"));
        radioETK1 = new GroupedRadioButton(QStringLiteral("radioETK1"), &owner);
        radioETK1->setTitle(QStringLiteral("SMS ile bilgilendirme"));
        radioETK2 = new GroupedRadioButton(QStringLiteral("radioETK2"), &owner);
        radioETK2->setTitle(QStringLiteral("E-posta ile bilgilendirme"));
        radioETK1->setOtherButtons({radioETK2});
        slider = new Slider(QStringLiteral("slider"), &owner);
        bell = new BadgeBarButtonItem(QStringLiteral("btnNotification"), &owner);
        plainItem = new BarButtonItem(QStringLiteral("btnPlain"), &owner);
        screen = new CityScreen;

        engine = new QQmlEngine;
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        auto* context = new QQmlContext(engine->rootContext(), engine);
        const QList<QPair<QString, QObject*>> properties = {
            {"btnCity", btnCity}, {"radioETK1", radioETK1}, {"radioETK2", radioETK2}, {"slider", slider},
            {"bell", bell},       {"plainItem", plainItem}, {"screen", screen}};
        for (const auto& p : properties) context->setContextProperty(p.first, p.second);
        QQmlComponent component(engine);
        component.setData(scene, QUrl(QStringLiteral("qrc:/test/Scene.qml")));
        root = qobject_cast<QQuickItem*>(component.create(context));
        QVERIFY2(root, qPrintable(component.errorString()));
        window = new QQuickWindow;
        window->resize(390, 844);
        root->setParentItem(window->contentItem());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
    }
    void cleanup() {
        delete root;
        delete window;
        delete engine;
        delete screen;
        qDeleteAll(owner.children());
        delete fake;
    }

    void dropDownUnrollsUnderItsButtonAndPicksByTap() {
        // The screen keeps the list before it shows it.
        auto* list = new DropDownList;
        screen->open(list);
        list->setDelegate(screen);
        list->showDropDown(btnCity, 250, {"Adana", "Konya", "Manisa"}, {}, QStringLiteral("down"));

        QCOMPARE(list->senderFrame(), QRectF(20, 100, 200, 44));
        QTRY_VERIFY(named(QStringLiteral("dropDownList")));
        QTRY_COMPARE(named(QStringLiteral("dropDownList"))->height(), 250.0);
        QCOMPARE(named(QStringLiteral("dropDownList"))->y(), 144.0);
        QList<QQuickItem*> cells = itemsNamed(window->contentItem(), QStringLiteral("Cell"));
        std::sort(cells.begin(), cells.end(),
                  [](QQuickItem* a, QQuickItem* b) { return a->property("row").toInt() < b->property("row").toInt(); });
        QCOMPARE(cells.size(), 3);
        QCOMPARE(cells.at(2)->height(), 50.0);
        QCOMPARE(QAccessible::queryAccessibleInterface(cells.at(2))->text(QAccessible::Name), QStringLiteral("Manisa"));

        tapItem(window, cells.at(2));
        QCOMPARE(screen->picked, QStringList{"Manisa"});
        QCOMPARE(named(QStringLiteral("btnCity"))->property("text").toString(), QStringLiteral("Manisa"));
        // Forgotten by the screen, the list still closes on screen.
        QTRY_VERIFY(!named(QStringLiteral("dropDownList")));
        QVERIFY(itemsNamed(window->contentItem(), QStringLiteral("Cell")).isEmpty());
    }

    void radioButtonsTapThroughTheGroup() {
        QQuickItem* first = named(QStringLiteral("radioETK1"));
        QQuickItem* second = named(QStringLiteral("radioETK2"));
        QVERIFY(first && second);
        tapItem(window, first);
        QVERIFY(radioETK1->isSelected());
        tapItem(window, second);
        QVERIFY(radioETK2->isSelected());
        QVERIFY(!radioETK1->isSelected());
        QVERIFY(!first->property("checked").toBool());
        QVERIFY(second->property("checked").toBool());
        QAccessibleInterface* a11y = QAccessible::queryAccessibleInterface(second);
        QCOMPARE(a11y->text(QAccessible::Name), QStringLiteral("E-posta ile bilgilendirme"));
        QVERIFY(a11y->state().checked);

        radioETK1->setHidden(true);
        QVERIFY(!named(QStringLiteral("radioETK1")));
    }

    void sliderTakesItsSizeFromTheViewAndShowsItsPages() {
        QCOMPARE(slider->size(), QSizeF(390, 200));
        slider->setSlides({"qrc:/ekinora/images/hm-back.png", "qrc:/ekinora/images/Property.png"});
        slider->setupSliderView();
        // The slider and its scroll view share the name, as on the screen.
        const QList<QQuickItem*> sliders = itemsNamed(window->contentItem(), QStringLiteral("slider"));
        QCOMPARE(sliders.size(), 2);
        QQuickItem* pages = sliders.at(1);
        QCOMPARE(pages->property("contentWidth").toDouble(), 780.0);
        QQuickItem* dots = named(QStringLiteral("pagger"));
        QVERIFY(dots);
        QCOMPARE(dots->property("count").toInt(), 2);

        fake->clock->advance(5000);
        QCOMPARE(dots->property("currentIndex").toInt(), 1);
        QTRY_COMPARE(pages->property("contentX").toDouble(), 390.0);
    }

    void barButtonDrawsTheItemsOwnBadge() {
        QQuickItem* button = named(QStringLiteral("btnNotification"));
        QVERIFY(button);
        QCOMPARE(bell->viewWidth(), 48.0);
        bell->setBadgeValue(QStringLiteral("3"));
        QCOMPARE(bell->badgeOriginX(), 16.0);
        QQuickItem* badge = named(QStringLiteral("badge"));
        QVERIFY(badge);
        QTRY_COMPARE(badge->x(), 16.0);
        bell->setBadgeValue(QString());
        QVERIFY(!named(QStringLiteral("badge")));

        // A plain item keeps the bar's own badge.
        plainItem->setBadgeValue(QStringLiteral("2"));
        QCOMPARE(itemsNamed(named(QStringLiteral("btnPlain")), QStringLiteral("badge")).size(), 0);
    }
};

EKINORA_GUI_TEST_MAIN(WidgetViewsTest)
#include "tst_widget_views.moc"
