#include "farms/Calendar.h"

#include "accounts/DemoAccounts.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace ekinora::server::farms {

namespace {

const std::string Fungal = "Mantari Hastalıklar";
const std::string Bacterial = "Bakteriyel Hastalıklar";
const std::string SeedAndSoil = "Tohum ve Toprak Kaynaklı Hastalıklar";

// Products of the `aps` table by role: herbicides 56 (broad-leaved) and 59 (grasses);
// fungicides 51, 53, 61 and the seed dressing 58; insecticides 52, 54, 55, 60 and the
// soil granule 57. The foliar fertiliser 62 answers no pest.
struct PestSeed {
    const char* slug; // its page on the product site
    const char* name;
    std::string group;
    const char* picture; // under /static/media/pests/
    const char* summary;
    std::vector<std::int64_t> products;
};

// The tables keep one record to a line or two.
// clang-format off
const std::vector<PestSeed>& pestSeeds() {
    static const std::vector<PestSeed> list = {
        // Weeds
        {"yabani-yulaf", "Yabani Yulaf", WeedsGroup, "ot-dar",
         "Hububat tarlalarının en yaygın dar yapraklı yabancı otudur; kardeşlenme döneminde mücadele "
         "edilmezse verimi belirgin biçimde düşürür.",
         {59}},
        {"gelincik", "Gelincik", WeedsGroup, "ot-genis",
         "Hububatta kışı rozet halinde geçiren geniş yapraklı bir yabancı ottur; kardeşlenme sonunda "
         "yapılan uygulama en iyi sonucu verir.",
         {56}},
        {"yabani-hardal", "Yabani Hardal", WeedsGroup, "ot-genis",
         "Hızlı gelişen, sarı çiçekli geniş yapraklı yabancı ottur; kültür bitkisiyle su ve besin için "
         "yarışır.",
         {56}},
        {"tilki-kuyrugu", "Tilki Kuyruğu", WeedsGroup, "ot-dar",
         "Serin iklim tahıllarında ve kanolada görülen dar yapraklı yabancı ottur.", {59}},
        {"kanyas", "Kanyaş", WeedsGroup, "ot-dar",
         "Rizomlarla yayılan çok yıllık dar yapraklı yabancı ottur; yazlık ürünlerde ciddi kayıplara yol "
         "açar.",
         {59}},
        {"horoz-ibigi", "Horoz İbiği", WeedsGroup, "ot-genis",
         "Yazlık ürünlerde sık görülen, çok tohum bağlayan geniş yapraklı yabancı ottur.", {56, 59}},
        {"sirken", "Sirken", WeedsGroup, "ot-genis",
         "Pancar ve sebze tarlalarında erken dönemde çıkan geniş yapraklı yabancı ottur.", {56}},
        {"darican", "Darıcan", WeedsGroup, "ot-dar",
         "Çeltik tarlalarının başlıca yabancı otudur; çeltikle aynı dönemde çimlenir.", {59}},
        {"kopekdisi-ayrigi", "Köpekdişi Ayrığı", WeedsGroup, "ot-dar",
         "Bağ ve bahçelerde sıra aralarını kaplayan çok yıllık dar yapraklı yabancı ottur.", {59}},
        {"semizotu", "Semizotu", WeedsGroup, "ot-genis",
         "Sulanan sebze alanlarında yayılan, etli yapraklı geniş yapraklı yabancı ottur.", {56}},

        // Harmful creatures
        {"sune", "Süne", CreaturesGroup, "bocek",
         "Buğdayın en önemli zararlısıdır; başakta emgi yaparak dane kalitesini bozar. Mücadele nimf "
         "döneminde yapılır.",
         {54, 60}},
        {"ekin-kambur-bocegi", "Ekin Kambur Böceği", CreaturesGroup, "bocek",
         "Larvaları çıkıştan sonra genç yaprakları lif haline getirir; erken ekilen tarlalarda zarar "
         "artar.",
         {54}},
        {"yaprak-biti", "Yaprak Biti", CreaturesGroup, "emici",
         "Genç sürgün ve yapraklarda koloni oluşturarak bitki özsuyunu emer ve virüs taşır.", {55, 52}},
        {"tel-kurdu", "Tel Kurdu", CreaturesGroup, "tirtil",
         "Toprakta yaşayan larvalar tohum ve fideleri keserek seyrekliğe neden olur.", {57}},
        {"misir-kocan-kurdu", "Mısır Koçan Kurdu", CreaturesGroup, "tirtil",
         "Larvaları sap ve koçanda galeri açarak bitkiyi kırılgan hale getirir.", {52, 54}},
        {"yesilkurt", "Yeşilkurt", CreaturesGroup, "tirtil",
         "Çiçek, koza ve meyveleri delerek beslenen tırtıldır; domates ve pamukta önemli kayıplara yol "
         "açar.",
         {52}},
        {"beyazsinek", "Beyazsinek", CreaturesGroup, "emici",
         "Yaprak altında beslenen küçük beyaz sinektir; ballı madde ve fumajine neden olur.", {55}},
        {"kirmizi-orumcek", "Kırmızı Örümcek", CreaturesGroup, "emici",
         "Sıcak ve kurak havalarda hızla çoğalan akardır; yapraklarda sararma ve dökülme yapar.", {52}},
        {"pancar-pire-bocegi", "Pancar Pire Böceği", CreaturesGroup, "bocek",
         "Çıkış döneminde çenek ve genç yaprakları delik deşik eder.", {54}},
        {"patates-bocegi", "Patates Böceği", CreaturesGroup, "bocek",
         "Ergin ve larvaları yaprakları yiyerek bitkiyi çıplak bırakabilir.", {54, 60}},
        {"salkim-guvesi", "Salkım Güvesi", CreaturesGroup, "tirtil",
         "Larvaları çiçek salkımlarını ve taneleri yiyerek çürüklüklere zemin hazırlar.", {52}},
        {"elma-ic-kurdu", "Elma İç Kurdu", CreaturesGroup, "tirtil",
         "Larvaları meyveye girerek çekirdek evine kadar galeri açar; kurtlu meyve oranını artırır.",
         {52, 60}},
        {"zeytin-sinegi", "Zeytin Sineği", CreaturesGroup, "bocek",
         "Larvaları danede beslenir; yağ kalitesini düşürür ve erken dökülmeye neden olur.", {60}},
        {"findik-kurdu", "Fındık Kurdu", CreaturesGroup, "bocek",
         "Dişiler yumurtalarını meyveye bırakır; larvalar içi yiyerek boş ve kurtlu fındığa yol açar.",
         {60, 54}},
        {"kolza-cicek-bocegi", "Kolza Çiçek Böceği", CreaturesGroup, "bocek",
         "Tomurcuklarla beslenerek çiçek dökümüne ve kapsül kaybına neden olur.", {54}},
        {"celtik-sap-kurdu", "Çeltik Sap Kurdu", CreaturesGroup, "tirtil",
         "Larvaları sapın içinde beslenerek ak başak ve ölü kalp belirtisine yol açar.", {57}},
        {"trips", "Trips", CreaturesGroup, "emici",
         "Çiçek ve genç yapraklarda beslenerek gümüşi lekeler ve şekil bozuklukları yapar.", {55}},
        {"pembe-kurt", "Pembe Kurt", CreaturesGroup, "tirtil",
         "Pamuğun koza zararlısıdır; larvalar kozanın içinde çiğitle beslenir.", {52}},

        // Diseases
        {"sari-pas", "Sarı Pas", Fungal, "pas",
         "Yapraklarda sıra halinde sarı püstüller oluşturan, serin ve nemli havalarda hızla yayılan bir "
         "hastalıktır.",
         {51, 61}},
        {"septorya-yaprak-lekesi", "Septorya Yaprak Lekesi", Fungal, "leke",
         "Alt yapraklardan başlayarak yukarı doğru ilerleyen kahverengi lekeler oluşturur.", {51, 53}},
        {"arpa-yaprak-lekesi", "Arpa Yaprak Lekesi", Fungal, "leke",
         "Arpada ağ ve çizgi şeklinde kahverengi lekeler oluşturarak fotosentezi azaltır.", {51}},
        {"misir-yaprak-yanikligi", "Mısır Yaprak Yanıklığı", Fungal, "leke",
         "Yapraklarda uzun, iğ biçimli gri-kahverengi lekelerle kendini gösterir.", {53, 51}},
        {"mildiyo", "Mildiyö", Fungal, "leke",
         "Nemli havalarda yaprak altında gri küf tabakası, üst yüzde yağ lekesi görünümü oluşturur.",
         {53, 61}},
        {"kulleme", "Külleme", Fungal, "kulleme",
         "Yaprak, sürgün ve meyvelerde un serpilmiş gibi beyaz bir tabaka oluşturur.", {51, 61}},
        {"erken-yaniklik", "Erken Yanıklık", Fungal, "leke",
         "Yaşlı yapraklarda iç içe halkalı koyu kahverengi lekeler oluşturur.", {53}},
        {"kursuni-kuf", "Kurşuni Küf", Fungal, "curukluk",
         "Olgunlaşan meyve ve salkımlarda gri küf ve çürüklük yapar.", {61}},
        {"karaleke", "Karaleke", Fungal, "leke",
         "Elmada yaprak ve meyvelerde önce zeytin yeşili, sonra kararan kabuklu lekeler oluşturur.",
         {53, 51}},
        {"halkali-leke", "Halkalı Leke", Fungal, "leke",
         "Zeytin yapraklarında halka şeklinde lekeler oluşturup yaprak dökümüne neden olur.", {53}},
        {"cercospora-yaprak-lekesi", "Cercospora Yaprak Lekesi", Fungal, "leke",
         "Pancar yapraklarında kırmızı-kahve kenarlı küçük yuvarlak lekeler oluşturur, şeker oranını "
         "düşürür.",
         {51, 61}},
        {"celtik-yanikligi", "Çeltik Yanıklığı", Fungal, "leke",
         "Yaprak ve boğumlarda göz şeklinde lekeler oluşturur; salkım boynunu kırarak boş başağa yol "
         "açar.",
         {51}},
        {"sklerotinya-curuklugu", "Sklerotinya Çürüklüğü", Fungal, "curukluk",
         "Sap ve tablalarda beyaz misel ve siyah sklerotlarla çürüklük yapar.", {51, 61}},
        {"zeytin-dal-kanseri", "Zeytin Dal Kanseri", Bacterial, "curukluk",
         "Dallarda ur şeklinde çıkıntılar oluşturur; budama ve dolu yaraları etmenin giriş kapısıdır.",
         {53}},
        {"ates-yanikligi", "Ateş Yanıklığı", Bacterial, "leke",
         "Çiçek ve sürgünleri yanmış gibi kurutur; çiçeklenmede koruyucu uygulama önemlidir.", {53}},
        {"bakteriyel-leke", "Bakteriyel Leke", Bacterial, "leke",
         "Yaprak ve meyvelerde yağlı görünümlü küçük koyu lekeler oluşturur.", {53}},
        {"surme-ve-rastik", "Sürme ve Rastık", SeedAndSoil, "curukluk",
         "Tohumla taşınır, başaktaki daneleri kara spor kütlesine çevirir; tohum ilaçlaması ile önlenir.",
         {58}},
        {"kok-ve-kokbogazi-curuklugu", "Kök ve Kökboğazı Çürüklüğü", SeedAndSoil, "curukluk",
         "Fideleri ve kökleri çürüterek bitki ölümüne ve seyrekliğe neden olur.", {58}},
        {"fusarium-solgunlugu", "Fusarium Solgunluğu", SeedAndSoil, "curukluk",
         "İletim demetlerini tıkayarak bitkinin bir yanından başlayan solgunluğa neden olur.", {58}},
        {"verticillium-solgunlugu", "Verticillium Solgunluğu", SeedAndSoil, "curukluk",
         "Toprakta uzun yıllar yaşayan etmen pamukta yaprak sararması ve kuruma yapar.", {58}},
        {"rizoktonya", "Rizoktonya (Siyah Siğil)", SeedAndSoil, "curukluk",
         "Yumrularda siyah kabuklar, sürgünlerde kahverengi yaralar oluşturur.", {58}},
    };
    return list;
}

struct PeriodSeed {
    const char* name;
    const char* picture; // under /static/media/periods/
    int startMonth;
    std::vector<const char*> pests; // slugs, in the order the lists show them
};

struct CropSeed {
    std::int64_t produceId;
    const char* farmPicture; // under /static/media/farms/
    bool periodDocuments;
    std::vector<PeriodSeed> periods; // in growing order; start months follow the season round
};

const std::vector<CropSeed>& cropSeeds() {
    static const std::vector<CropSeed> list = {
        {1, "bugday", false,
         {{"Ekim", "ekim", 10, {"surme-ve-rastik", "kok-ve-kokbogazi-curuklugu", "tel-kurdu"}},
          {"Çıkış", "cikis", 11, {"ekin-kambur-bocegi", "tel-kurdu"}},
          {"Kardeşlenme", "kardeslenme", 12,
           {"yabani-yulaf", "gelincik", "yabani-hardal", "septorya-yaprak-lekesi"}},
          {"Sapa Kalkma", "sapa-kalkma", 4,
           {"yabani-yulaf", "yaprak-biti", "sari-pas", "septorya-yaprak-lekesi"}},
          {"Başaklanma", "basak", 5, {"sune", "yaprak-biti", "sari-pas"}},
          {"Olgunlaşma", "olgunlasma", 6, {"sune"}},
          {"Hasat", "hasat", 7, {}}}},
        {2, "arpa", false,
         {{"Ekim", "ekim", 10, {"surme-ve-rastik", "kok-ve-kokbogazi-curuklugu"}},
          {"Çıkış", "cikis", 11, {"ekin-kambur-bocegi"}},
          {"Kardeşlenme", "kardeslenme", 12, {"yabani-yulaf", "yabani-hardal", "arpa-yaprak-lekesi"}},
          {"Sapa Kalkma", "sapa-kalkma", 3, {"tilki-kuyrugu", "arpa-yaprak-lekesi", "sari-pas"}},
          {"Başaklanma", "basak", 4, {"yaprak-biti", "sari-pas"}},
          {"Olgunlaşma", "olgunlasma", 5, {"sune"}},
          {"Hasat", "hasat", 6, {}}}},
        {3, "misir", false,
         {{"Ekim", "ekim", 4, {"tel-kurdu", "kok-ve-kokbogazi-curuklugu"}},
          {"Çıkış", "cikis", 5, {"kanyas", "horoz-ibigi", "tel-kurdu"}},
          {"Yaprak Gelişimi", "yaprak", 6, {"kanyas", "horoz-ibigi", "misir-kocan-kurdu", "yaprak-biti"}},
          {"Tepe Püskülü", "basak", 7, {"misir-kocan-kurdu", "kirmizi-orumcek", "misir-yaprak-yanikligi"}},
          {"Dane Dolumu", "meyve", 8, {"misir-kocan-kurdu", "misir-yaprak-yanikligi"}},
          {"Hasat", "hasat", 9, {}}}},
        {4, "aycicegi", false,
         {{"Ekim", "ekim", 4, {"tel-kurdu", "kok-ve-kokbogazi-curuklugu"}},
          {"Çıkış", "cikis", 5, {"horoz-ibigi", "sirken", "mildiyo"}},
          {"Tabla Oluşumu", "yaprak", 6, {"horoz-ibigi", "yaprak-biti", "mildiyo"}},
          {"Çiçeklenme", "cicek", 7, {"yesilkurt", "sklerotinya-curuklugu"}},
          {"Tane Dolumu", "meyve", 8, {"sklerotinya-curuklugu"}},
          {"Hasat", "hasat", 9, {}}}},
        {5, "pamuk", false,
         {{"Ekim", "ekim", 4, {"kok-ve-kokbogazi-curuklugu", "verticillium-solgunlugu"}},
          {"Çıkış", "cikis", 5, {"kanyas", "trips", "yaprak-biti"}},
          {"Taraklanma", "yaprak", 6,
           {"kanyas", "horoz-ibigi", "yaprak-biti", "beyazsinek", "kirmizi-orumcek"}},
          {"Çiçeklenme", "cicek", 7, {"yesilkurt", "pembe-kurt", "beyazsinek", "verticillium-solgunlugu"}},
          {"Koza Oluşumu", "meyve", 8, {"yesilkurt", "pembe-kurt"}},
          {"Koza Açımı ve Hasat", "hasat", 9, {}}}},
        {6, "kanola", false,
         {{"Ekim", "ekim", 9, {"kok-ve-kokbogazi-curuklugu"}},
          {"Çıkış", "cikis", 10, {"tilki-kuyrugu"}},
          {"Rozet", "kardeslenme", 11, {"tilki-kuyrugu", "yaprak-biti"}},
          {"Sapa Kalkma", "sapa-kalkma", 3, {"kolza-cicek-bocegi", "sklerotinya-curuklugu"}},
          {"Çiçeklenme", "cicek", 4, {"kolza-cicek-bocegi", "sklerotinya-curuklugu"}},
          {"Kapsül Oluşumu", "meyve", 5, {"yaprak-biti"}},
          {"Hasat", "hasat", 6, {}}}},
        {7, "seker-pancari", true,
         {{"Ekim", "ekim", 3, {"tel-kurdu", "kok-ve-kokbogazi-curuklugu"}},
          {"Çıkış", "cikis", 4, {"sirken", "horoz-ibigi", "pancar-pire-bocegi"}},
          {"Yaprak Gelişimi", "yaprak", 5,
           {"sirken", "horoz-ibigi", "yaprak-biti", "cercospora-yaprak-lekesi"}},
          {"Sıraların Kapanması", "yaprak", 6, {"cercospora-yaprak-lekesi", "kulleme"}},
          {"Kök Gelişimi", "kok", 7, {"kirmizi-orumcek", "cercospora-yaprak-lekesi", "kulleme"}},
          {"Hasat", "hasat", 9, {}}}},
        {8, "celtik", false,
         {{"Ekim", "ekim", 5, {"darican", "kok-ve-kokbogazi-curuklugu"}},
          {"Kardeşlenme", "kardeslenme", 6, {"darican", "celtik-sap-kurdu"}},
          {"Sapa Kalkma", "sapa-kalkma", 7, {"celtik-sap-kurdu", "celtik-yanikligi"}},
          {"Salkım Çıkarma", "basak", 8, {"celtik-yanikligi"}},
          {"Olgunlaşma", "olgunlasma", 9, {}},
          {"Hasat", "hasat", 10, {}}}},
        {9, "patates", false,
         {{"Dikim", "ekim", 4, {"tel-kurdu", "rizoktonya"}},
          {"Çıkış", "cikis", 5, {"sirken", "horoz-ibigi", "patates-bocegi"}},
          {"Yumru Bağlama", "kok", 6, {"patates-bocegi", "yaprak-biti", "mildiyo", "erken-yaniklik"}},
          {"Yumru Gelişimi", "kok", 7, {"mildiyo", "erken-yaniklik"}},
          {"Olgunlaşma", "olgunlasma", 8, {}},
          {"Hasat", "hasat", 9, {}}}},
        {10, "domates", false,
         {{"Fide Dikimi", "fide", 4, {"tel-kurdu", "kok-ve-kokbogazi-curuklugu"}},
          {"Vejetatif Gelişme", "yaprak", 5, {"semizotu", "yaprak-biti", "beyazsinek", "bakteriyel-leke"}},
          {"Çiçeklenme", "cicek", 6, {"trips", "beyazsinek", "erken-yaniklik"}},
          {"Meyve Tutumu", "meyve-tutumu", 7, {"yesilkurt", "kirmizi-orumcek", "mildiyo", "kulleme"}},
          {"Olgunlaşma ve Hasat", "hasat", 8, {"yesilkurt", "kursuni-kuf"}}}},
        {11, "biber", false,
         {{"Fide Dikimi", "fide", 4, {"kok-ve-kokbogazi-curuklugu", "fusarium-solgunlugu"}},
          {"Vejetatif Gelişme", "yaprak", 5, {"semizotu", "yaprak-biti", "trips"}},
          {"Çiçeklenme", "cicek", 6, {"trips", "kirmizi-orumcek", "kulleme"}},
          {"Meyve Tutumu", "meyve-tutumu", 7, {"yesilkurt", "bakteriyel-leke"}},
          {"Hasat", "hasat", 8, {"kursuni-kuf"}}}},
        {12, "karpuz", false,
         {{"Fide Dikimi", "fide", 4, {"tel-kurdu", "fusarium-solgunlugu"}},
          {"Vejetatif Gelişme", "yaprak", 5, {"semizotu", "horoz-ibigi", "yaprak-biti"}},
          {"Çiçeklenme", "cicek", 6, {"trips", "kulleme"}},
          {"Meyve Gelişimi", "meyve", 7, {"kirmizi-orumcek", "kulleme", "mildiyo"}},
          {"Hasat", "hasat", 8, {}}}},
        {13, "uzum", false,
         {{"Gözlerin Uyanması", "uyanma", 3, {"kopekdisi-ayrigi"}},
          {"Sürgün Gelişimi", "yaprak", 4, {"kopekdisi-ayrigi", "mildiyo", "kulleme"}},
          {"Çiçeklenme", "cicek", 5, {"salkim-guvesi", "mildiyo", "kulleme"}},
          {"Koruk Dönemi", "meyve-tutumu", 6, {"salkim-guvesi", "kirmizi-orumcek", "kulleme"}},
          {"Ben Düşme", "meyve", 7, {"salkim-guvesi", "kursuni-kuf"}},
          {"Hasat", "hasat", 8, {"kursuni-kuf"}},
          {"Kış Dinlenmesi", "dinlenme", 11, {}}}},
        {14, "elma", false,
         {{"Uyanma", "uyanma", 3, {"yaprak-biti", "karaleke"}},
          {"Pembe Tomurcuk", "uyanma", 4, {"karaleke", "kulleme"}},
          {"Çiçeklenme", "cicek", 4, {"ates-yanikligi", "karaleke"}},
          {"Meyve Tutumu", "meyve-tutumu", 5, {"elma-ic-kurdu", "yaprak-biti", "karaleke"}},
          {"Meyve Gelişimi", "meyve", 6, {"kopekdisi-ayrigi", "elma-ic-kurdu", "kirmizi-orumcek", "kulleme"}},
          {"Hasat", "hasat", 9, {}},
          {"Kış Dinlenmesi", "dinlenme", 11, {}}}},
        {15, "zeytin", false,
         {{"Sürgün ve Çiçek Tomurcuğu", "uyanma", 3, {"kopekdisi-ayrigi", "halkali-leke"}},
          {"Çiçeklenme", "cicek", 5, {"halkali-leke"}},
          {"Meyve Tutumu", "meyve-tutumu", 6, {"kopekdisi-ayrigi"}},
          {"Çekirdek Sertleşmesi", "meyve", 7, {"zeytin-sinegi"}},
          {"Yağ Birikimi", "olgunlasma", 9, {"zeytin-sinegi", "halkali-leke"}},
          {"Hasat", "hasat", 11, {"zeytin-dal-kanseri"}}}},
        {16, "findik", true,
         {{"Çiçeklenme", "cicek", 1, {}},
          {"Yapraklanma", "yaprak", 4, {"kopekdisi-ayrigi", "yaprak-biti"}},
          {"Meyve Tutumu", "meyve-tutumu", 5, {"findik-kurdu", "kulleme"}},
          {"İç Dolumu", "meyve", 6, {"findik-kurdu", "kulleme"}},
          {"Hasat", "hasat", 8, {}},
          {"Budama ve Bakım", "dinlenme", 10, {}}}},
    };
    return list;
}

// clang-format on

// A period's id: the crop's id times 100 plus its place, so the ids rise in growing order.
std::int64_t periodId(std::int64_t produceId, size_t place) {
    return produceId * 100 + std::int64_t(place) + 1;
}

struct DemoFarm {
    std::string phone;
    std::int64_t produceId;
    double size;
    size_t period; // place in the crop's periods
    std::vector<std::int64_t> products;
};

void seedDemoFarms(Database& db) {
    const std::vector<DemoFarm> farms = {
        // Konya, Çumra: winter wheat, and sugar beet, whose farms open the period's document.
        {accounts::demoAccount("farmer").phone, 1, 180, 2, {59, 51, 54}},
        {accounts::demoAccount("farmer").phone, 7, 45, 2, {56}},
        // Manisa, Alaşehir: a sultana vineyard.
        {accounts::demoAccount("loyalty").phone, 13, 22.5, 1, {61, 52}},
    };
    for (const auto& farm : farms) {
        const auto userId = db.scalar("SELECT id FROM users WHERE phone = ?", {farm.phone});
        if (!userId) continue; // a database whose demo accounts were removed
        db.execute("INSERT INTO farms (user_id, produce_id, size_dekar, period_id) VALUES (?, ?, ?, ?)",
                   {userId, farm.produceId, farm.size, periodId(farm.produceId, farm.period)});
        const auto farmId = db.lastInsertId();
        std::int64_t position = 0;
        for (auto product : farm.products)
            db.execute("INSERT INTO farm_aps (farm_id, ap_id, position) VALUES (?, ?, ?)",
                       {farmId, product, ++position});
    }
}

} // namespace

void seedCalendar(Database& db) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM periods") > 0) return;

    db.transaction([&] {
        std::map<std::string, std::int64_t> pestIds;
        for (const auto& pest : pestSeeds()) {
            db.execute(
                "INSERT INTO pests (slug, name, group_name, image_path, summary) VALUES (?, ?, ?, ?, ?)",
                {std::string(pest.slug), std::string(pest.name), std::string(pest.group),
                 "/static/media/pests/" + std::string(pest.picture) + ".svg", std::string(pest.summary)});
            const auto id = db.lastInsertId();
            pestIds[pest.slug] = id;
            std::int64_t position = 0;
            for (auto product : pest.products)
                db.execute("INSERT INTO pest_aps (pest_id, ap_id, position) VALUES (?, ?, ?)",
                           {id, product, ++position});
        }

        for (const auto& crop : cropSeeds()) {
            if (!db.scalar("SELECT COUNT(*) FROM produces WHERE id = ?", {crop.produceId})) continue;
            db.execute("INSERT INTO crop_calendars (produce_id, farm_image_path, period_documents)"
                       " VALUES (?, ?, ?)",
                       {crop.produceId, "/static/media/farms/" + std::string(crop.farmPicture) + ".svg",
                        std::int64_t(crop.periodDocuments ? 1 : 0)});
            for (size_t place = 0; place < crop.periods.size(); ++place) {
                const auto& period = crop.periods[place];
                const auto id = periodId(crop.produceId, place);
                db.execute("INSERT INTO periods (id, produce_id, name, image_path, start_month)"
                           " VALUES (?, ?, ?, ?, ?)",
                           {id, crop.produceId, std::string(period.name),
                            "/static/media/periods/" + std::string(period.picture) + ".svg",
                            std::int64_t(period.startMonth)});
                std::int64_t position = 0;
                for (const char* slug : period.pests) {
                    auto pest = pestIds.find(slug);
                    if (pest == pestIds.end()) throw std::logic_error(std::string("unknown pest ") + slug);
                    db.execute("INSERT INTO period_pests (period_id, pest_id, position) VALUES (?, ?, ?)",
                               {id, pest->second, ++position});
                }
            }
        }

        seedDemoFarms(db);
    });
}

std::optional<std::int64_t> seasonalPeriod(Database& db, std::int64_t produceId, int month) {
    const Json periods =
        db.query("SELECT id, start_month FROM periods WHERE produce_id = ? ORDER BY id", {produceId});
    if (periods.empty()) return std::nullopt;
    // Months counted from the start of the crop's season, so a winter crop's round wraps the year.
    const int seasonStart = periods.front().at("start_month").get<int>();
    auto sinceStart = [&](int m) { return (m - seasonStart + 12) % 12; };
    std::int64_t chosen = periods.front().at("id").get<std::int64_t>();
    for (const auto& period : periods)
        if (sinceStart(period.at("start_month").get<int>()) <= sinceStart(month))
            chosen = period.at("id").get<std::int64_t>();
    return chosen;
}

} // namespace ekinora::server::farms
