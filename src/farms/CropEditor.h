#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QStringList>
#include <QVariantMap>
#include <functional>

namespace ekinora::farms {

// What differs between the screens that edit a crop with the crop editor.
struct CropEditorPolicy {
    int productLimit = 3;
    // The crop label of a new crop, and what it reads when the crop list closes with nothing chosen.
    QString noCrop = QStringLiteral("Ürün Seçiniz");
    QString noCropOnClose = QStringLiteral("Ürün Seçiniz");
    QString noProducts = QStringLiteral("Zirai Ürün Seçiniz");
    // A product cell's text goes under this name; the text item is named so when nameProductText.
    QString productTextControl = QStringLiteral("textLabel");
    bool nameProductText = true;
    bool productSelectionStyle = false;
    double productRowHeight = 50;
    // A plants or products reply whose status is not 200 is dropped rather than read.
    bool dropRefusedLists = false;
    // The navigation bar takes no touches while the panel is open.
    bool holdNavigationBar = false;
    // Where the keyboard is taken away besides opening a list and closing the panel.
    bool endEditingOnOpen = false;
    bool endEditingOnAccept = false;
    // Opening the panel for a new crop forgets the products chosen before.
    bool clearProductsOnOpen = true;
    // Where the crop goes: the host keeps it or sends it.
    std::function<void()> add, update, remove;

    // The texts of the panels.
    QString heading = QStringLiteral("Tarla Bilgileri");
    QString plantCaption = QStringLiteral("Ekili ürün");
    QString plantPurpose = QStringLiteral("Ekili ürün");
    QString sizeCaption;
    QString sizePurpose;
    QString productCaption = QStringLiteral("Kullandığınız zirai ürünler");
    QString productPurpose = QStringLiteral("Kullandığınız zirai ürünler");
    // The accessible name of a choice carries its value after the purpose.
    bool purposeWithValue = false;
    QString plantsHeading = QStringLiteral("Ekili Ürün");
    QString productsHeading = QStringLiteral("Zirai Ürünler");
    QString productsHint;
};

// The panel that edits one crop (its kind, its size, its products) with the two lists it chooses
// from. Each host embeds it in its view, starts it with load(), and saves what it holds through the
// policy's add, update and remove.
class CropEditor : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its host screen.")
    UI_OUTLET(ekinora::platform::View, viewNewProduce)
    UI_OUTLET(ekinora::platform::View, viewPlant)
    UI_OUTLET(ekinora::platform::View, viewProduct)
    UI_OUTLET(ekinora::platform::Label, lblFarm)
    UI_OUTLET(ekinora::platform::Label, lblProduct)
    UI_OUTLET(ekinora::platform::TextField, txtFarmSize)
    UI_OUTLET(ekinora::platform::Button, btnNewProduce)
    UI_OUTLET(ekinora::platform::Button, btnUpdateProduce)
    UI_OUTLET(ekinora::platform::Button, btnDeleteProduce)
    UI_OUTLET(ekinora::platform::TableView, collPlants)
    UI_OUTLET(ekinora::platform::TableView, tblProducts)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constCollPlantHeight)
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString plantCaption READ plantCaption CONSTANT)
    Q_PROPERTY(QString plantPurpose READ plantPurpose CONSTANT)
    Q_PROPERTY(QString sizeCaption READ sizeCaption CONSTANT)
    Q_PROPERTY(QString sizePurpose READ sizePurpose CONSTANT)
    Q_PROPERTY(QString productCaption READ productCaption CONSTANT)
    Q_PROPERTY(QString productPurpose READ productPurpose CONSTANT)
    Q_PROPERTY(bool purposeWithValue READ purposeWithValue CONSTANT)
    Q_PROPERTY(QString plantsHeading READ plantsHeading CONSTANT)
    Q_PROPERTY(QString productsHeading READ productsHeading CONSTANT)
    Q_PROPERTY(QString productsHint READ productsHint CONSTANT)
    Q_PROPERTY(QString productTextControl READ productTextControl CONSTANT)
    Q_PROPERTY(QString productTextName READ productTextName CONSTANT)
public:
    CropEditor(CropEditorPolicy policy, platform::ViewController* host);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrPlants;   // collPlants: the crop kinds
    QJsonArray arrProducts; // tblProducts: the products, names made plain
    QStringList arrSelectedProducts;
    qint32 selectedPlantIndex = -1;

    platform::View *viewNewProduce, *viewPlant, *viewProduct;
    platform::Label *lblFarm, *lblProduct;
    platform::TextField* txtFarmSize;
    platform::Button *btnNewProduce, *btnUpdateProduce, *btnDeleteProduce;
    platform::TableView *collPlants, *tblProducts;
    platform::LayoutConstraint* constCollPlantHeight;

    // Forgets the lists and the choices, asks for the crop kinds and the products, closes the panels.
    void load();
    // Opens the panel on a crop the host holds, with its texts as the host shows them.
    void openCrop(const QString& crop, const QString& size, const QString& products);

    // The two lists' loads, each into its list.
    void getPlants();
    void getProducts();

    QVariantMap plantCell(int row) const;
    QVariantMap productCell(int row) const;
    void selectPlant(int row);
    void selectProduct(int row);

    // The chosen products' ids in the order chosen, and the products themselves as id and name; a
    // name that matches nothing adds nothing.
    QJsonArray chosenProductIds() const;
    QJsonArray chosenProducts() const;
    // The crop kind by the name the panel shows; the last of equal names wins, undefined without one.
    platform::Json chosenPlant() const;
    const CropEditorPolicy& policy() const { return m_policy; }

    QString heading() const { return m_policy.heading; }
    QString plantCaption() const { return m_policy.plantCaption; }
    QString plantPurpose() const { return m_policy.plantPurpose; }
    QString sizeCaption() const { return m_policy.sizeCaption; }
    QString sizePurpose() const { return m_policy.sizePurpose; }
    QString productCaption() const { return m_policy.productCaption; }
    QString productPurpose() const { return m_policy.productPurpose; }
    bool purposeWithValue() const { return m_policy.purposeWithValue; }
    QString plantsHeading() const { return m_policy.plantsHeading; }
    QString productsHeading() const { return m_policy.productsHeading; }
    QString productsHint() const { return m_policy.productsHint; }
    QString productTextControl() const { return m_policy.productTextControl; }
    QString productTextName() const { return m_policy.nameProductText ? m_policy.productTextControl : QString(); }

public slots:
    void openNewProduceView(QObject* sender = nullptr);
    void removeNewProduceView(QObject* sender = nullptr);
    void openPlantsView(QObject* sender = nullptr);
    void removePlantsView(QObject* sender = nullptr);
    void openProductView(QObject* sender = nullptr);
    void removeProductView(QObject* sender = nullptr);
    void acceptProductView(QObject* sender = nullptr);
    void addProduct(QObject* sender = nullptr);
    void updateProduce(QObject* sender = nullptr);
    void deleteProduce(QObject* sender = nullptr);

private:
    void setNavigationBarTouches(bool enabled);
    QString plantName(int row) const;
    QString productName(int row) const;

    CropEditorPolicy m_policy;
    platform::ViewController* m_host;
};

} // namespace ekinora::farms
