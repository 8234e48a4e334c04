#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

namespace ekinora::seeds {

// The range the side menu chose last: "maize", "canola", or anything else.
QString maizeCanola();

// The maize range's four group buttons.
class MaizeHomeViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
public:
    using ViewController::ViewController;
    QUrl viewSource() const override;
    void viewDidLoad() override;
public slots:
    void toAllButtonTapped(QObject* sender = nullptr);
    void pg1Tapped(QObject* sender = nullptr);
    void pg2Tapped(QObject* sender = nullptr);
    void pg3Tapped(QObject* sender = nullptr);

private:
    void openList(const QString& id);
};

// The seed list of the range the menu chose, as a list or a grid with a search bar over it. During a
// search the two labels change places.
class MaizeAllViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TextField, searchBar)
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::TableView, collectionView)
    Q_PROPERTY(bool showsGrid READ showsGrid NOTIFY layoutChanged)
public:
    explicit MaizeAllViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TextField* searchBar;
    platform::TableView* tableView;
    platform::TableView* collectionView;
    QString id = QStringLiteral("");
    QList<int> indexArr;
    bool searchBegin = false;
    bool isList = false;
    bool leftBarButtonRemoved = false; // the maize list goes without the menu button
    bool showsGrid() const { return !collectionView->isHidden(); }

    void viewDidLoad() override;
    void loadProducts();
    int numberOfItems() const;
    QVariantMap cellValues(const QString& reuseIdentifier, int row) const;
    void didSelectRow(int row);

public slots:
    void changeGridWithSender(QObject* sender = nullptr);
    void searchTextChanged(QObject* sender = nullptr);
    void searchBarSearchButtonClicked(QObject* sender = nullptr);
    void scrollViewWillBeginDragging(QObject* sender = nullptr);
signals:
    void layoutChanged();
};

// One card of an open seed section: a picture, a title or a canola head, and a text.
struct SeedCard {
    QString kind; // "MaizeDetailAfter2CB" or "MaizeDetailAfter2Img"
    QString title, canolaTitle, detail, imageUrl;
    bool imgViewHidden = false, titleHidden = false, hidden = false;
    QVariantMap values() const;
};

// The cards of a section, made anew from the tree at each drawing.
QList<SeedCard> seedCards(const platform::Json& section, int row, const QString& range);

// One maize or canola hybrid: header, documents and sections of native cards, one open at a time.
class MaizeDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::ImageView, productImg)
    UI_OUTLET(ekinora::platform::ImageView, backgroundImg)
    UI_OUTLET(ekinora::platform::Label, productNameLbl)
    UI_OUTLET(ekinora::platform::Label, groupNameLbl)
    UI_OUTLET(ekinora::platform::Label, productName2Lbl)
    UI_OUTLET(ekinora::platform::Label, productSloganLbl)
    UI_OUTLET(ekinora::platform::TableView, tableView1)
    UI_OUTLET(ekinora::platform::LayoutConstraint, tableView1Height)
    UI_OUTLET(ekinora::platform::TableView, tableView2)
    UI_OUTLET(ekinora::platform::LayoutConstraint, tableView2Height)
    UI_OUTLET(ekinora::platform::View, topView)
    UI_OUTLET(ekinora::platform::View, fullImageView)
    UI_OUTLET(ekinora::platform::ImageView, largeImageView)
    UI_OUTLET(ekinora::platform::Button, closeImageButton)
public:
    explicit MaizeDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::ImageView* productImg;
    platform::ImageView* backgroundImg;
    platform::Label* productNameLbl;
    platform::Label* groupNameLbl;
    platform::Label* productName2Lbl;
    platform::Label* productSloganLbl;
    platform::TableView* tableView1;
    platform::LayoutConstraint* tableView1Height;
    platform::TableView* tableView2;
    platform::LayoutConstraint* tableView2Height;
    platform::View* topView;
    platform::View* fullImageView;
    platform::ImageView* largeImageView;
    platform::Button* closeImageButton;
    bool checkWebView = false;
    QString id = QStringLiteral("");
    int selectedIndex = 0;
    QStringList contentStrings;
    int contentStringIndex = 0;

    void viewDidLoad() override;
    void loadMaizeDetail();
    void fillMaizeHeader();

public slots:
    void callButton(QObject* sender = nullptr);
    void closeImageView(QObject* sender = nullptr);

private:
    platform::Json data() const;
    platform::ListRow sectionCell(int row) const;
    void didSelectSection(int row);
    void didSelectDocument(int row);
    void updateSectionHeight();
};

void registerScreens();

} // namespace ekinora::seeds
