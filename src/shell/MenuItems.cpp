#include "MenuItems.h"

namespace ekinora::shell {

const QList<MenuItem>& menuItems() {
    static const QList<MenuItem> items = {
        {0, QStringLiteral("Anasayfa"), QStringLiteral("home"), QStringLiteral("firstViewController")},
        {1, QStringLiteral("Profilim"), QStringLiteral("profile"), QStringLiteral("profileVC")},
        {2, QStringLiteral("Bayi Bilgileri"), QStringLiteral("profile"), QStringLiteral("dealerVC")},
        {3, QStringLiteral("Tarlalarım"), QStringLiteral("tarla"), QStringLiteral("farmVC")},
        {4, QStringLiteral("Tarım Borsası"), QStringLiteral("tarimBorsasiMenu"), QStringLiteral("farmingStockVC")},
        {5, QStringLiteral("Mesajlarım"), QStringLiteral("mesaj"), QStringLiteral("messageVC")},
        {6, QStringLiteral("Videolar"), QStringLiteral("video"), QStringLiteral("videoVC")},
        {7, QStringLiteral("Etkinlikler"), QStringLiteral("etkinlik"), QStringLiteral("eventVC")},
        {8, QStringLiteral("Haberler"), QStringLiteral("news"), QStringLiteral("newsVC")},
        {9, QStringLiteral("Ürün Tarat  YENİ "), QStringLiteral("barcode"), QStringLiteral("scanProductVC")},
        {10, QStringLiteral("QR İle Satış Yap"), QStringLiteral("qr"), QStringLiteral("barcodeVC")},
        {11, QStringLiteral("QR Hediye Et"), QStringLiteral("qr"), QStringLiteral("qrGiftVC")},
        {12, QStringLiteral("Hibe Destek"), QStringLiteral("hibe"), QStringLiteral("grantVC")},
        {13, QStringLiteral("Çekiliş"), QStringLiteral("firsat"), QStringLiteral("gameVC")},
        {14, QStringLiteral("Bilgilendirme"), QStringLiteral("info"), QStringLiteral("infoVC")},
        {15, QStringLiteral("Bitki Koruma Ürünleri  YENİ "), QStringLiteral("urun"), QStringLiteral("HomeSB")},
        {16, QStringLiteral("Mısır Tohum Ürünleri  YENİ "), QStringLiteral("tarimMisir"), QStringLiteral("MaizeSB")},
        {17, QStringLiteral("Kanola Tohum Ürünleri  YENİ "), QStringLiteral("canola"), QStringLiteral("MaizeAllSB")},
        {18, QStringLiteral("Bereket Kulübü  YENİ "), QStringLiteral("loyalty"), QStringLiteral("loyaltyVC")},
        {19, QStringLiteral("QR Kodum  YENİ "), QStringLiteral("qr"), QStringLiteral("MyQrCodeSB")},
    };
    return items;
}

const MenuItem* menuItem(int code) {
    const auto& items = menuItems();
    return code >= 0 && code < items.size() ? &items[code] : nullptr;
}

} // namespace ekinora::shell
