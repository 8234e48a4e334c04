#include "weather/Climate.h"

namespace ekinora::server::weather {

namespace {

using R = Regime;
constexpr bool Sea = true;
constexpr bool Land = false;

// Rounded long-term means of each province's centre: January °C, July °C, mm a year.
const Climate Provinces[81] = {
    {9.6, 28.3, 670, R::Mediterranean, Land},  // 1 Adana
    {4.5, 30.5, 720, R::Southeastern, Land},   // 2 Adıyaman
    {-0.3, 21.8, 420, R::Continental, Land},   // 3 Afyonkarahisar
    {-10.5, 21.0, 520, R::Eastern, Land},      // 4 Ağrı
    {2.5, 23.5, 450, R::Continental, Land},    // 5 Amasya
    {0.3, 23.5, 400, R::Continental, Land},    // 6 Ankara
    {10.0, 28.3, 1050, R::Mediterranean, Sea}, // 7 Antalya
    {2.5, 21.0, 710, R::BlackSea, Land},       // 8 Artvin
    {8.3, 28.3, 650, R::Mediterranean, Land},  // 9 Aydın
    {5.0, 24.5, 580, R::Marmara, Land},        // 10 Balıkesir
    {3.0, 21.8, 450, R::Continental, Land},    // 11 Bilecik
    {-3.5, 26.5, 940, R::Eastern, Land},       // 12 Bingöl
    {-4.5, 22.5, 1200, R::Eastern, Land},      // 13 Bitlis
    {0.5, 19.5, 550, R::BlackSea, Land},       // 14 Bolu
    {1.6, 24.0, 420, R::Continental, Land},    // 15 Burdur
    {5.3, 24.3, 710, R::Marmara, Land},        // 16 Bursa
    {6.2, 25.0, 610, R::Marmara, Sea},         // 17 Çanakkale
    {-1.0, 22.5, 400, R::Continental, Land},   // 18 Çankırı
    {-0.5, 21.0, 440, R::Continental, Land},   // 19 Çorum
    {5.8, 27.0, 560, R::Mediterranean, Land},  // 20 Denizli
    {1.8, 31.0, 490, R::Southeastern, Land},   // 21 Diyarbakır
    {2.5, 24.5, 590, R::Marmara, Land},        // 22 Edirne
    {-1.5, 27.5, 410, R::Eastern, Land},       // 23 Elazığ
    {-5.5, 24.5, 380, R::Eastern, Land},       // 24 Erzincan
    {-9.5, 19.5, 430, R::Eastern, Land},       // 25 Erzurum
    {0.0, 21.5, 380, R::Continental, Land},    // 26 Eskişehir
    {3.5, 27.5, 560, R::Southeastern, Land},   // 27 Gaziantep
    {7.0, 22.5, 1270, R::BlackSea, Sea},       // 28 Giresun
    {-2.5, 20.5, 470, R::Eastern, Land},       // 29 Gümüşhane
    {-5.5, 23.5, 760, R::Eastern, Land},       // 30 Hakkari
    {8.5, 27.5, 1150, R::Mediterranean, Sea},  // 31 Hatay
    {1.8, 23.8, 530, R::Continental, Land},    // 32 Isparta
    {10.5, 27.8, 590, R::Mediterranean, Sea},  // 33 Mersin
    {5.8, 23.5, 840, R::Marmara, Sea},         // 34 İstanbul
    {8.8, 28.0, 700, R::Mediterranean, Sea},   // 35 İzmir
    {-11.0, 17.5, 510, R::Eastern, Land},      // 36 Kars
    {-1.0, 19.5, 490, R::BlackSea, Land},      // 37 Kastamonu
    {-2.5, 22.5, 400, R::Continental, Land},   // 38 Kayseri
    {2.8, 23.5, 560, R::Marmara, Land},        // 39 Kırklareli
    {-0.5, 23.0, 380, R::Continental, Land},   // 40 Kırşehir
    {6.5, 23.5, 820, R::Marmara, Sea},         // 41 Kocaeli
    {-0.2, 23.5, 330, R::Continental, Land},   // 42 Konya
    {0.0, 20.8, 560, R::Continental, Land},    // 43 Kütahya
    {0.0, 28.0, 390, R::Eastern, Land},        // 44 Malatya
    {6.8, 28.0, 740, R::Mediterranean, Land},  // 45 Manisa
    {5.0, 29.0, 720, R::Mediterranean, Land},  // 46 Kahramanmaraş
    {2.5, 28.5, 670, R::Southeastern, Land},   // 47 Mardin
    {5.2, 25.5, 1150, R::Mediterranean, Land}, // 48 Muğla
    {-8.5, 24.0, 770, R::Eastern, Land},       // 49 Muş
    {-1.0, 21.5, 420, R::Continental, Land},   // 50 Nevşehir
    {-0.5, 22.0, 340, R::Continental, Land},   // 51 Niğde
    {7.5, 22.5, 1050, R::BlackSea, Sea},       // 52 Ordu
    {7.0, 22.5, 2250, R::BlackSea, Sea},       // 53 Rize
    {6.0, 23.5, 830, R::Marmara, Land},        // 54 Sakarya
    {7.0, 23.0, 700, R::BlackSea, Sea},        // 55 Samsun
    {2.5, 30.5, 720, R::Southeastern, Land},   // 56 Siirt
    {7.0, 22.5, 680, R::BlackSea, Sea},        // 57 Sinop
    {-3.5, 19.5, 430, R::Continental, Land},   // 58 Sivas
    {4.8, 23.5, 590, R::Marmara, Sea},         // 59 Tekirdağ
    {1.8, 22.0, 440, R::Continental, Land},    // 60 Tokat
    {7.2, 23.0, 820, R::BlackSea, Sea},        // 61 Trabzon
    {-2.5, 26.5, 860, R::Eastern, Land},       // 62 Tunceli
    {5.5, 32.5, 460, R::Southeastern, Land},   // 63 Şanlıurfa
    {2.2, 23.5, 550, R::Continental, Land},    // 64 Uşak
    {-3.5, 22.0, 390, R::Eastern, Land},       // 65 Van
    {-2.5, 19.5, 590, R::Continental, Land},   // 66 Yozgat
    {6.0, 21.5, 1230, R::BlackSea, Sea},       // 67 Zonguldak
    {0.0, 23.5, 350, R::Continental, Land},    // 68 Aksaray
    {-7.5, 18.5, 440, R::Eastern, Land},       // 69 Bayburt
    {0.5, 23.5, 330, R::Continental, Land},    // 70 Karaman
    {0.5, 24.5, 380, R::Continental, Land},    // 71 Kırıkkale
    {2.5, 31.5, 480, R::Southeastern, Land},   // 72 Batman
    {1.5, 29.5, 700, R::Southeastern, Land},   // 73 Şırnak
    {4.0, 21.5, 1030, R::BlackSea, Sea},       // 74 Bartın
    {-11.5, 15.5, 550, R::Eastern, Land},      // 75 Ardahan
    {-3.5, 26.5, 260, R::Eastern, Land},       // 76 Iğdır
    {6.5, 23.5, 750, R::Marmara, Sea},         // 77 Yalova
    {2.0, 22.5, 470, R::BlackSea, Land},       // 78 Karabük
    {5.0, 28.5, 500, R::Southeastern, Land},   // 79 Kilis
    {8.0, 28.0, 830, R::Mediterranean, Land},  // 80 Osmaniye
    {4.0, 22.5, 830, R::BlackSea, Land},       // 81 Düzce
};

// January to December.
const std::array<double, 12> MediterraneanShares = {0.19, 0.145, 0.10,  0.06,  0.04, 0.015,
                                                    0.005, 0.005, 0.02, 0.07, 0.14, 0.21};
const std::array<double, 12> MarmaraShares = {0.14,  0.11, 0.09, 0.06, 0.05, 0.045,
                                              0.03, 0.035, 0.05, 0.10, 0.13, 0.16};
const std::array<double, 12> BlackSeaShares = {0.09,  0.075, 0.07, 0.06,  0.06, 0.065,
                                               0.055, 0.07,  0.09, 0.125, 0.12, 0.12};
const std::array<double, 12> ContinentalShares = {0.11, 0.085, 0.09,  0.11, 0.13,  0.08,
                                                  0.03, 0.025, 0.035, 0.08, 0.095, 0.13};
const std::array<double, 12> EasternShares = {0.09, 0.09, 0.10, 0.13, 0.14, 0.07,
                                              0.03, 0.02, 0.03, 0.09, 0.11, 0.10};
const std::array<double, 12> SoutheasternShares = {0.17,  0.15,  0.13, 0.11, 0.06, 0.01,
                                                   0.003, 0.002, 0.01, 0.06, 0.13, 0.165};

} // namespace

const Climate* provinceClimate(std::int64_t cityId) {
    if (cityId < 1 || cityId > 81) return nullptr;
    return &Provinces[cityId - 1];
}

const std::array<double, 12>& monthlyShares(Regime regime) {
    switch (regime) {
    case Regime::Mediterranean: return MediterraneanShares;
    case Regime::Marmara: return MarmaraShares;
    case Regime::BlackSea: return BlackSeaShares;
    case Regime::Continental: return ContinentalShares;
    case Regime::Eastern: return EasternShares;
    case Regime::Southeastern: return SoutheasternShares;
    }
    return ContinentalShares;
}

} // namespace ekinora::server::weather
