#include "catalogue/Catalogue.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ekinora::server::catalogue {

namespace {

struct GroupSeed {
    std::int64_t id;
    const char* name;
};
struct PlantSeed {
    std::int64_t id;
    const char* name;
    const char* kind; // field crops, vegetables, fruit
};
struct IllnessSeed {
    std::int64_t id;
    const char* name;
    const char* kind; // disease, pest, weed, physiological
};
// A product: the plant and the illness of each of its uses.
struct ProductSeed {
    std::int64_t id;
    const char* title;
    std::int64_t group;
    const char* activeSubstance;
    const char* formulation;
    const char* packageSizes;
    std::vector<std::pair<std::int64_t, std::int64_t>> uses;
};

// Generated once from the catalogue's planning sheet; edited by hand since.
// clang-format off
const std::vector<GroupSeed>& groupSeeds() {
    static const std::vector<GroupSeed> list = {
        {1, "Herbisit"},
        {2, "Fungisit"},
        {3, "İnsektisit"},
        {4, "Akarisit"},
        {5, "Nematisit"},
        {6, "Tohum İlacı"},
        {7, "Bitki Gelişim Düzenleyici"},
        {8, "Yaprak Gübresi"},
    };
    return list;
}

const std::vector<PlantSeed>& plantSeeds() {
    static const std::vector<PlantSeed> list = {
        {1, "Buğday", "Tarla Bitkileri"},
        {2, "Arpa", "Tarla Bitkileri"},
        {3, "Mısır", "Tarla Bitkileri"},
        {4, "Ayçiçeği", "Tarla Bitkileri"},
        {5, "Pamuk", "Tarla Bitkileri"},
        {6, "Şeker Pancarı", "Tarla Bitkileri"},
        {7, "Çeltik", "Tarla Bitkileri"},
        {8, "Patates", "Sebze"},
        {9, "Domates", "Sebze"},
        {10, "Biber", "Sebze"},
        {11, "Hıyar", "Sebze"},
        {12, "Soğan", "Sebze"},
        {13, "Bağ (Üzüm)", "Meyve"},
        {14, "Elma", "Meyve"},
        {15, "Kiraz", "Meyve"},
        {16, "Narenciye", "Meyve"},
        {17, "Zeytin", "Meyve"},
        {18, "Fındık", "Meyve"},
        {19, "İncir", "Meyve"},
        {20, "Iğdır Kayısısı", "Meyve"},
    };
    return list;
}

const std::vector<IllnessSeed>& illnessSeeds() {
    static const std::vector<IllnessSeed> list = {
        {1, "Yabani Yulaf", "Yabancı Ot"},
        {2, "Gelincik", "Yabancı Ot"},
        {3, "Kır Hardalı", "Yabancı Ot"},
        {4, "Darıcan", "Yabancı Ot"},
        {5, "Horoz İbiği", "Yabancı Ot"},
        {6, "Köpek Dişi Ayrığı", "Yabancı Ot"},
        {7, "Sirken", "Yabancı Ot"},
        {8, "Sarı Pas", "Hastalık"},
        {9, "Septorya Yaprak Lekesi", "Hastalık"},
        {10, "Arpa Yaprak Lekesi", "Hastalık"},
        {11, "Külleme", "Hastalık"},
        {12, "Mildiyö", "Hastalık"},
        {13, "Kurşuni Küf", "Hastalık"},
        {14, "Erken Yanıklık", "Hastalık"},
        {15, "Karaleke", "Hastalık"},
        {16, "Çeltik Yanıklığı", "Hastalık"},
        {17, "Monilya", "Hastalık"},
        {18, "Sürme", "Hastalık"},
        {19, "Rastık", "Hastalık"},
        {20, "Çökerten", "Hastalık"},
        {21, "Beyaz Sinek", "Zararlı"},
        {22, "Pamuk Yaprak Kurdu", "Zararlı"},
        {23, "Mısır Koçan Kurdu", "Zararlı"},
        {24, "Domates Güvesi", "Zararlı"},
        {25, "Patates Böceği", "Zararlı"},
        {26, "Elma İç Kurdu", "Zararlı"},
        {27, "Salkım Güvesi", "Zararlı"},
        {28, "Zeytin Sineği", "Zararlı"},
        {29, "Fındık Kurdu", "Zararlı"},
        {30, "Yaprak Biti", "Zararlı"},
        {31, "Trips", "Zararlı"},
        {32, "Süne", "Zararlı"},
        {33, "Kiraz Sineği", "Zararlı"},
        {34, "Akdeniz Meyve Sineği", "Zararlı"},
        {35, "İncir Sineği", "Zararlı"},
        {36, "Kırmızı Örümcek", "Zararlı"},
        {37, "Turunçgil Pas Akarı", "Zararlı"},
        {38, "Kök-ur Nematodu", "Zararlı"},
        {39, "Pancar Kist Nematodu", "Zararlı"},
        {40, "Tel Kurdu", "Zararlı"},
        {41, "Yatma", "Fizyolojik"},
        {42, "Meyve Dökümü", "Fizyolojik"},
        {43, "Çinko Noksanlığı", "Fizyolojik"},
        {44, "Kayısı Dal Kıran", "Hastalık"},
    };
    return list;
}

const std::vector<ProductSeed>& productSeeds() {
    static const std::vector<ProductSeed> list = {
        {1001, "Irgat<sup>&reg;</sup> 250 SL", 1, "250 g/l Pinoksaden", "SL", "100 ml, 250 ml, 500 ml", {{1, 1}, {1, 2}}},
        {1002, "Tarlan<sup>&reg;</sup> 100 OD", 1, "100 g/l Florasulam", "OD", "250 ml, 500 ml, 1 l", {{2, 1}, {2, 2}, {3, 4}}},
        {1003, "Ayrıkkıran<sup>&reg;</sup> 480 EC", 1, "480 g/l 2,4-D Amin Tuzu", "EC", "100 ml, 250 ml, 500 ml", {{3, 5}, {4, 6}, {6, 7}, {7, 4}}},
        {1004, "Gelincix<sup>&reg;</sup> 80 WG", 1, "%80 Nikosulfuron", "WG", "250 g, 500 g, 1 kg", {{7, 4}, {5, 6}, {12, 7}, {1, 1}, {1, 2}}},
        {1005, "Sirkenol<sup>&reg;</sup> 200 SL", 1, "200 g/l Mesotrion", "SL", "100 ml, 250 ml, 500 ml", {{1, 1}, {1, 2}}},
        {1006, "İlkbahar<sup>&reg;</sup> 25 OD", 1, "25 g/l Kletodim", "OD", "250 ml, 500 ml, 1 l", {{2, 1}, {2, 2}, {3, 4}}},
        {1007, "Yabanex<sup>&reg;</sup> 500 EC", 1, "500 g/l Fenmedifam", "EC", "100 ml, 250 ml, 500 ml", {{3, 5}, {4, 6}, {6, 7}, {7, 4}}},
        {1008, "Darımax<sup>&reg;</sup> 50 WG", 1, "%50 Bispiribak Sodyum", "WG", "250 g, 500 g, 1 kg", {{7, 4}, {5, 6}, {12, 7}, {1, 1}, {1, 2}}},
        {1009, "Otkes<sup>&reg;</sup> 100 SL", 1, "100 g/l Pinoksaden", "SL", "100 ml, 250 ml, 500 ml", {{1, 1}, {1, 2}}},
        {1010, "Çayırbek<sup>&reg;</sup> 480 OD", 1, "480 g/l Florasulam", "OD", "250 ml, 500 ml, 1 l", {{2, 1}, {2, 2}, {3, 4}}},
        {1011, "Kırlangıç<sup>&reg;</sup> 50 EC", 1, "50 g/l 2,4-D Amin Tuzu", "EC", "100 ml, 250 ml, 500 ml", {{3, 5}, {4, 6}, {6, 7}, {7, 4}}},
        {1012, "Ilgaz<sup>&reg;</sup> 250 SC", 2, "250 g/l Tebukonazol", "SC", "100 ml, 250 ml, 500 ml", {{1, 8}, {1, 9}}},
        {1013, "Külmer<sup>&reg;</sup> 50 WG", 2, "%50 Azoksistrobin", "WG", "250 g, 500 g, 1 kg", {{13, 11}, {13, 12}, {13, 13}}},
        {1014, "Mildex<sup>&reg;</sup> 480 EC", 2, "480 g/l Mankozeb", "EC", "100 ml, 250 ml, 500 ml", {{9, 12}, {9, 14}, {8, 12}, {14, 15}}},
        {1015, "Paskalkan<sup>&reg;</sup> 80 WP", 2, "%80 Metalaksil-M", "WP", "250 g, 500 g, 1 kg", {{14, 15}, {14, 11}, {11, 11}, {7, 16}, {10, 13}}},
        {1016, "İnciden<sup>&reg;</sup> 200 SC", 2, "200 g/l Boskalid", "SC", "100 ml, 250 ml, 500 ml", {{7, 16}, {10, 13}}},
        {1017, "Kurşunay<sup>&reg;</sup> 5 WG", 2, "%5 Kükürt", "WG", "250 g, 500 g, 1 kg", {{20, 44}, {1, 8}, {1, 9}}},
        {1018, "Yeşilkal<sup>&reg;</sup> 500 EC", 2, "500 g/l Difenokonazol", "EC", "100 ml, 250 ml, 500 ml", {{2, 10}, {13, 11}, {13, 12}, {13, 13}}},
        {1019, "Tarvizol<sup>&reg;</sup> 50 WP", 2, "%50 Siprodinil", "WP", "250 g, 500 g, 1 kg", {{13, 13}, {9, 12}, {9, 14}, {8, 12}, {14, 15}}},
        {1020, "Bağbozan<sup>&reg;</sup> 100 SC", 2, "100 g/l Tebukonazol", "SC", "100 ml, 250 ml, 500 ml", {{8, 12}, {14, 15}}},
        {1021, "Lekesiz<sup>&reg;</sup> 80 WG", 2, "%80 Azoksistrobin", "WG", "250 g, 500 g, 1 kg", {{11, 11}, {7, 16}, {10, 13}}},
        {1022, "Sarıpasol<sup>&reg;</sup> 50 EC", 2, "50 g/l Mankozeb", "EC", "100 ml, 250 ml, 500 ml", {{15, 17}, {20, 44}, {1, 8}, {1, 9}}},
        {1023, "Yanıkgard<sup>&reg;</sup> 5 WP", 2, "%5 Metalaksil-M", "WP", "250 g, 500 g, 1 kg", {{1, 9}, {2, 10}, {13, 11}, {13, 12}, {13, 13}}},
        {1024, "Monilyon<sup>&reg;</sup> 25 SC", 2, "25 g/l Boskalid", "SC", "100 ml, 250 ml, 500 ml", {{13, 12}, {13, 13}}},
        {1025, "Işıldak<sup>&reg;</sup> 50 WG", 2, "%50 Kükürt", "WG", "250 g, 500 g, 1 kg", {{9, 14}, {8, 12}, {14, 15}}},
        {1026, "Fungora<sup>&reg;</sup> 250 EC", 2, "250 g/l Difenokonazol", "EC", "100 ml, 250 ml, 500 ml", {{14, 11}, {11, 11}, {7, 16}, {10, 13}}},
        {1027, "Arpalux<sup>&reg;</sup> 80 WP", 2, "%80 Siprodinil", "WP", "250 g, 500 g, 1 kg", {{10, 13}, {15, 17}, {20, 44}, {1, 8}, {1, 9}}},
        {1028, "İnsekta<sup>&reg;</sup> 250 EC", 3, "250 g/l Deltametrin", "EC", "100 ml, 250 ml, 500 ml", {{5, 21}, {5, 22}}},
        {1029, "Kurdex<sup>&reg;</sup> 100 SC", 3, "100 g/l Asetamiprid", "SC", "250 ml, 500 ml, 1 l", {{9, 24}, {8, 25}, {14, 26}}},
        {1030, "Sinekol<sup>&reg;</sup> 70 WG", 3, "%70 Klorantraniliprol", "WG", "100 g, 250 g, 500 g", {{13, 27}, {17, 28}, {18, 29}, {10, 30}}},
        {1031, "Tripsen<sup>&reg;</sup> 50 CS", 3, "50 g/l Spinosad", "CS", "250 ml, 500 ml, 1 l", {{10, 30}, {11, 31}, {1, 32}, {15, 33}, {16, 34}}},
        {1032, "Güvekıran<sup>&reg;</sup> 200 EC", 3, "200 g/l Lambda-sihalotrin", "EC", "100 ml, 250 ml, 500 ml", {{15, 33}, {16, 34}}},
        {1033, "Koçanel<sup>&reg;</sup> 25 SC", 3, "25 g/l Emamektin Benzoat", "SC", "250 ml, 500 ml, 1 l", {{5, 21}, {5, 22}, {3, 23}}},
        {1034, "Süneks<sup>&reg;</sup> 25 WG", 3, "%25 Flonikamid", "WG", "100 g, 250 g, 500 g", {{9, 24}, {8, 25}, {14, 26}, {13, 27}}},
        {1035, "Afidor<sup>&reg;</sup> 250 CS", 3, "250 g/l Deltametrin", "CS", "250 ml, 500 ml, 1 l", {{13, 27}, {17, 28}, {18, 29}, {10, 30}, {11, 31}}},
        {1036, "Beyazgard<sup>&reg;</sup> 100 EC", 3, "100 g/l Asetamiprid", "EC", "100 ml, 250 ml, 500 ml", {{10, 30}, {11, 31}}},
        {1037, "Zeytinsin<sup>&reg;</sup> 480 SC", 3, "480 g/l Klorantraniliprol", "SC", "250 ml, 500 ml, 1 l", {{15, 33}, {16, 34}, {19, 35}}},
        {1038, "Fındıkar<sup>&reg;</sup> 10 WG", 3, "%10 Spinosad", "WG", "100 g, 250 g, 500 g", {{5, 21}, {5, 22}, {3, 23}, {9, 24}}},
        {1039, "Kiras<sup>&reg;</sup> 200 CS", 3, "200 g/l Lambda-sihalotrin", "CS", "250 ml, 500 ml, 1 l", {{9, 24}, {8, 25}, {14, 26}, {13, 27}, {17, 28}}},
        {1040, "Akdeniza<sup>&reg;</sup> 25 EC", 3, "25 g/l Emamektin Benzoat", "EC", "100 ml, 250 ml, 500 ml", {{13, 27}, {17, 28}}},
        {1041, "İncirol<sup>&reg;</sup> 500 SC", 3, "500 g/l Flonikamid", "SC", "250 ml, 500 ml, 1 l", {{10, 30}, {11, 31}, {1, 32}}},
        {1042, "Patabek<sup>&reg;</sup> 70 WG", 3, "%70 Deltametrin", "WG", "100 g, 250 g, 500 g", {{15, 33}, {16, 34}, {19, 35}, {5, 21}}},
        {1043, "KARAKOL<sup>&reg;</sup> 100 CS", 3, "100 g/l Asetamiprid", "CS", "250 ml, 500 ml, 1 l", {{5, 21}, {5, 22}, {3, 23}, {9, 24}, {8, 25}}},
        {1044, "Örümtek<sup>&reg;</sup> 250 EC", 4, "250 g/l Abamektin", "EC", "100 ml, 250 ml, 500 ml", {{5, 36}, {14, 36}}},
        {1045, "Akarsız<sup>&reg;</sup> 100 SC", 4, "100 g/l Spirodiklofen", "SC", "250 ml, 500 ml, 1 l", {{16, 37}, {18, 36}, {13, 36}}},
        {1046, "Kırmızan<sup>&reg;</sup> 480 EC", 4, "480 g/l Heksitiazoks", "EC", "100 ml, 250 ml, 500 ml", {{5, 36}, {14, 36}, {11, 36}, {16, 37}}},
        {1047, "Pasakar<sup>&reg;</sup> 50 SC", 4, "50 g/l Etoksazol", "SC", "250 ml, 500 ml, 1 l", {{16, 37}, {18, 36}, {13, 36}, {5, 36}, {14, 36}}},
        {1048, "Miteks<sup>&reg;</sup> 200 EC", 4, "200 g/l Abamektin", "EC", "100 ml, 250 ml, 500 ml", {{5, 36}, {14, 36}}},
        {1049, "Akarel<sup>&reg;</sup> 25 SC", 4, "25 g/l Spirodiklofen", "SC", "250 ml, 500 ml, 1 l", {{16, 37}, {18, 36}, {13, 36}}},
        {1050, "Nemakıran<sup>&reg;</sup> 250 SC", 5, "250 g/l Fluopiram", "SC", "100 ml, 250 ml, 500 ml", {{9, 38}, {11, 38}}},
        {1051, "Köktüm<sup>&reg;</sup> 50 GR", 5, "%50 Fostiazat", "GR", "250 g, 500 g, 1 kg", {{6, 39}, {9, 38}, {11, 38}}},
        {1052, "Kistanol<sup>&reg;</sup> 480 SC", 5, "480 g/l Fluopiram", "SC", "100 ml, 250 ml, 500 ml", {{10, 38}, {6, 39}, {9, 38}, {11, 38}}},
        {1053, "Toprakgard<sup>&reg;</sup> 80 GR", 5, "%80 Fostiazat", "GR", "250 g, 500 g, 1 kg", {{11, 38}, {10, 38}, {6, 39}, {9, 38}}},
        {1054, "Sürmek<sup>&reg;</sup> 250 FS", 6, "250 g/l Tebukonazol + 50 g/l Tiram", "FS", "100 ml, 250 ml, 500 ml", {{1, 18}, {2, 19}}},
        {1055, "Tohumsan<sup>&reg;</sup> 50 WS", 6, "%50 Fludioksonil", "WS", "250 g, 500 g, 1 kg", {{4, 12}, {5, 20}, {8, 40}}},
        {1056, "Rastıkol<sup>&reg;</sup> 480 FS", 6, "480 g/l Metalaksil-M + 96 g/l Fludioksonil", "FS", "100 ml, 250 ml, 500 ml", {{1, 18}, {2, 19}, {3, 40}, {4, 12}}},
        {1057, "Çimlenek<sup>&reg;</sup> 80 WS", 6, "%40 Tebukonazol + %40 Tiram", "WS", "250 g, 500 g, 1 kg", {{4, 12}, {5, 20}, {8, 40}, {1, 18}, {2, 19}}},
        {1058, "Filizor<sup>&reg;</sup> 200 FS", 6, "200 g/l Fludioksonil", "FS", "100 ml, 250 ml, 500 ml", {{1, 18}, {2, 19}}},
        {1059, "Telkıran<sup>&reg;</sup> 5 WS", 6, "%2 Metalaksil-M + %2 Fludioksonil", "WS", "250 g, 500 g, 1 kg", {{4, 12}, {5, 20}, {8, 40}}},
        {1060, "Boylan<sup>&reg;</sup> 250 SL", 7, "250 g/l Trineksapak-etil", "SL", "100 ml, 250 ml, 500 ml", {{1, 41}, {2, 41}}},
        {1061, "Dikdur<sup>&reg;</sup> 100 ME", 7, "100 g/l Naftil Asetik Asit", "ME", "250 ml, 500 ml, 1 l", {{15, 42}, {5, 42}, {1, 41}}},
        {1062, "Tutunur<sup>&reg;</sup> 480 SL", 7, "480 g/l Mepikuat Klorür", "SL", "100 ml, 250 ml, 500 ml", {{2, 41}, {14, 42}, {15, 42}, {5, 42}}},
        {1063, "Meyvetut<sup>&reg;</sup> 50 ME", 7, "50 g/l Trineksapak-etil", "ME", "250 ml, 500 ml, 1 l", {{5, 42}, {1, 41}, {2, 41}, {14, 42}, {15, 42}}},
        {1064, "Yatmaz<sup>&reg;</sup> 200 SL", 7, "200 g/l Naftil Asetik Asit", "SL", "100 ml, 250 ml, 500 ml", {{14, 42}, {15, 42}}},
        {1065, "Çinkovit SL", 8, "250 g/l Çinko EDTA", "SL", "100 ml, 250 ml, 500 ml", {{3, 43}, {1, 43}}},
        {1066, "Borlu Yeşil SP", 8, "%50 Bor Etanolamin", "SP", "250 g, 500 g, 1 kg", {{16, 43}, {3, 43}, {1, 43}}},
        {1067, "Yaprakgüç SL", 8, "480 g/l Azot + 96 g/l Çinko", "SL", "100 ml, 250 ml, 500 ml", {{14, 43}, {16, 43}, {3, 43}, {1, 43}}},
        {1068, "Verimix SP", 8, "%80 Çinko EDTA", "SP", "250 g, 500 g, 1 kg", {{1, 43}, {14, 43}, {16, 43}, {3, 43}}},
        {1069, "Filizbesin SL", 8, "200 g/l Bor Etanolamin", "SL", "100 ml, 250 ml, 500 ml", {{3, 43}, {1, 43}}},
        {1070, "Hasatlı<sup>&reg;</sup> 480 SC", 2, "480 g/l Tebukonazol", "SC", "100 ml, 250 ml, 500 ml", {{1, 8}, {1, 9}}},
        {1071, "Ovagard<sup>&reg;</sup> 5 WG", 1, "%5 Nikosulfuron", "WG", "250 g, 500 g, 1 kg", {{7, 4}, {5, 6}, {12, 7}, {1, 1}, {1, 2}}},
        {1072, "Kozalak<sup>&reg;</sup> 480 EC", 3, "480 g/l Klorantraniliprol", "EC", "100 ml, 250 ml, 500 ml", {{9, 24}, {8, 25}}},
        {1073, "Bereketli<sup>&reg;</sup> 5 WG", 2, "%5 Azoksistrobin", "WG", "250 g, 500 g, 1 kg", {{13, 11}, {13, 12}, {13, 13}}},
        {1074, "Toprağın İzi<sup>&reg;</sup> 500 FS", 6, "500 g/l Tebukonazol + 100 g/l Tiram", "FS", "100 ml, 250 ml, 500 ml", {{1, 18}, {2, 19}, {3, 40}, {4, 12}}},
        {1075, "Irmakçay<sup>&reg;</sup> 25 SL", 1, "25 g/l Mesotrion", "SL", "100 ml, 250 ml, 500 ml", {{1, 1}, {1, 2}}},
        {1076, "Yıldırım<sup>&reg;</sup> 50 SC", 3, "50 g/l Spinosad", "SC", "250 ml, 500 ml, 1 l", {{13, 27}, {17, 28}, {18, 29}}},
        {1077, "ISPARTA Kalkanı<sup>&reg;</sup> 200 EC", 2, "200 g/l Mankozeb", "EC", "100 ml, 250 ml, 500 ml", {{9, 12}, {9, 14}, {8, 12}, {14, 15}}},
        {1078, "Altınbaşak<sup>&reg;</sup> 500 OD", 1, "500 g/l Kletodim", "OD", "250 ml, 500 ml, 1 l", {{2, 1}, {2, 2}, {3, 4}}},
        {1079, "Üzümsan<sup>&reg;</sup> 50 WP", 2, "%50 Metalaksil-M", "WP", "250 g, 500 g, 1 kg", {{14, 15}, {14, 11}, {11, 11}, {7, 16}, {10, 13}}},
        {1080, "Güneşol<sup>&reg;</sup> 250 EC", 1, "250 g/l Fenmedifam", "EC", "100 ml, 250 ml, 500 ml", {{3, 5}, {4, 6}, {6, 7}, {7, 4}}},
        {1081, "Çiftçinur<sup>&reg;</sup> 25 WG", 3, "%25 Lambda-sihalotrin", "WG", "100 g, 250 g, 500 g", {{10, 30}, {11, 31}, {1, 32}, {15, 33}}},
        {1082, "Pınarlı<sup>&reg;</sup> 500 SC", 2, "500 g/l Boskalid", "SC", "100 ml, 250 ml, 500 ml", {{7, 16}, {10, 13}}},
        {1083, "Ilıca<sup>&reg;</sup> 500 EC", 4, "500 g/l Heksitiazoks", "EC", "100 ml, 250 ml, 500 ml", {{5, 36}, {14, 36}, {11, 36}, {16, 37}}},
        {1084, "Kızılırmak<sup>&reg;</sup> 25 CS", 3, "25 g/l Emamektin Benzoat", "CS", "250 ml, 500 ml, 1 l", {{15, 33}, {16, 34}, {19, 35}, {5, 21}, {5, 22}}},
    };
    return list;
}
// clang-format on

// A text as an SQL literal.
std::string quoted(const std::string& text) {
    std::string out = "'";
    for (char c : text) {
        if (c == '\'') out += '\'';
        out += c;
    }
    return out + "'";
}

} // namespace

std::string schemaSql() {
    return R"sql(
CREATE TABLE catalogue_groups (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    sort_order INTEGER NOT NULL
);
CREATE TABLE catalogue_plants (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    kind TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE TABLE catalogue_illnesses (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    kind TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE TABLE catalogue_products (
    id INTEGER PRIMARY KEY,
    catalog TEXT NOT NULL,
    title TEXT NOT NULL,
    group_id INTEGER NOT NULL REFERENCES catalogue_groups(id),
    active_substance TEXT NOT NULL,
    formulation TEXT NOT NULL,
    package_sizes TEXT NOT NULL,
    image_path TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE INDEX catalogue_products_catalog ON catalogue_products(catalog, sort_order);
CREATE TABLE catalogue_uses (
    product_id INTEGER NOT NULL REFERENCES catalogue_products(id) ON DELETE CASCADE,
    plant_id INTEGER NOT NULL REFERENCES catalogue_plants(id),
    illness_id INTEGER NOT NULL REFERENCES catalogue_illnesses(id),
    PRIMARY KEY (product_id, plant_id, illness_id)
);
CREATE INDEX catalogue_uses_plant ON catalogue_uses(plant_id);
CREATE INDEX catalogue_uses_illness ON catalogue_uses(illness_id);
)sql";
}

std::string seedSql() {
    std::string sql;
    const std::string ignore = " ON CONFLICT DO NOTHING;\n";
    std::int64_t order = 0;
    for (const auto& g : groupSeeds())
        sql += "INSERT INTO catalogue_groups (id, name, sort_order) VALUES (" + std::to_string(g.id) + ", " +
               quoted(g.name) + ", " + std::to_string(++order) + ")" + ignore;
    order = 0;
    for (const auto& p : plantSeeds())
        sql += "INSERT INTO catalogue_plants (id, name, kind, sort_order) VALUES (" + std::to_string(p.id) + ", " +
               quoted(p.name) + ", " + quoted(p.kind) + ", " + std::to_string(++order) + ")" + ignore;
    order = 0;
    for (const auto& i : illnessSeeds())
        sql += "INSERT INTO catalogue_illnesses (id, name, kind, sort_order) VALUES (" + std::to_string(i.id) + ", " +
               quoted(i.name) + ", " + quoted(i.kind) + ", " + std::to_string(++order) + ")" + ignore;
    order = 0;
    for (const auto& p : productSeeds()) {
        sql += "INSERT INTO catalogue_products (id, catalog, title, group_id, active_substance, formulation,"
               " package_sizes, image_path, sort_order) VALUES (" +
               std::to_string(p.id) + ", 'product-catalog', " + quoted(p.title) + ", " + std::to_string(p.group) + ", " +
               quoted(p.activeSubstance) + ", " + quoted(p.formulation) + ", " + quoted(p.packageSizes) + ", " +
               quoted("/static/catalogue/" + std::to_string(p.id) + ".svg") + ", " + std::to_string(++order) + ")" +
               ignore;
        for (const auto& [plant, illness] : p.uses)
            sql += "INSERT INTO catalogue_uses (product_id, plant_id, illness_id) VALUES (" + std::to_string(p.id) + ", " +
                   std::to_string(plant) + ", " + std::to_string(illness) + ")" + ignore;
    }
    return sql;
}

} // namespace ekinora::server::catalogue
