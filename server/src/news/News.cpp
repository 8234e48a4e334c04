#include "news/News.h"

#include "core/Envelope.h"
#include "core/Params.h"
#include "news/Feed.h"

namespace ekinora::server::news {

namespace {

const std::string NotFound = "Aradığınız haber bulunamadı.";
const std::string BadPageFlag = "Sayfa isteği anlaşılamadı.";

struct Seed {
    int daysAgo;
    const char* picture; // under static/news, with its thumbnail under static/news/thumbs
    const char* header;
    const char* text;
};

// Newest first.
const Seed Items[] = {
    {1, "bugday.jpg", "Hububatta yabancı ot mücadelesinde doğru zaman: kardeşlenme dönemi",
     "Buğday ve arpa tarlalarında yabancı otlarla mücadelenin en verimli olduğu dönem, kültür bitkisinin "
     "kardeşlenmeye başladığı ve yabancı otların 2-4 yapraklı olduğu dönemdir. Bu dönemde yapılan "
     "uygulamalarda ilaç yaprak yüzeyine daha iyi tutunur, otlar henüz kök sistemlerini "
     "güçlendirmediği için etki daha hızlı görülür.\n\nZiraat mühendislerimiz, uygulamanın rüzgârsız ve "
     "yağış beklenmeyen bir günde, hava sıcaklığı 8 °C'nin üzerindeyken yapılmasını öneriyor. Don "
     "beklenen günlerde ilaçlama yapılmamalı; ilaç tankı hazırlanırken etiketteki karışım sırasına "
     "uyulmalıdır.\n\nBölgenizdeki uygulama zamanını ürün takviminizden takip edebilir, sorularınızı "
     "uygulamadaki Soru Sor bölümünden ziraat mühendislerimize iletebilirsiniz."},
    {3, "domates.jpg", "Örtü altı domateste beyaz sinek uyarısı",
     "Antalya ve Mersin'deki seralarda son iki haftada beyaz sinek yoğunluğunun arttığı gözlendi. "
     "Beyaz sinek bitki özsuyunu emerek bitkiyi zayıflatır, salgıladığı tatlımsı madde meyvede "
     "fumajine yol açar ve virüs hastalıklarını taşır.\n\nSera girişlerinde ince gözlü tül kullanılması, "
     "sarı yapışkan tuzaklarla yoğunluğun izlenmesi ve yabancı otların temizlenmesi ilk önlemlerdir. "
     "Tuzaklarda artış görüldüğünde, etkili maddeleri dönüşümlü kullanarak direnç gelişmesinin önüne "
     "geçmek gerekir.\n\nHasada yakın dönemlerde etikette yazan bekleme sürelerine mutlaka uyunuz."},
    {6, "misir.jpg", "Mısır ekiminde toprak sıcaklığı 10 °C'yi bulmadan acele etmeyin",
     "Çukurova'da ikinci ürün, İç Anadolu'da ise ana ürün mısır ekimi için hazırlıklar sürüyor. "
     "Tohumun hızlı ve düzgün çimlenmesi için 5 cm derinlikteki toprak sıcaklığının birkaç gün üst "
     "üste 10 °C'nin üzerinde kalması gerekir.\n\nSoğuk toprağa yapılan ekimlerde çimlenme uzar, "
     "fideler toprak kökenli hastalıklara açık hâle gelir ve tarlada boşluklar oluşur. Ekim derinliği "
     "tınlı topraklarda 4-5 cm, hafif topraklarda 5-6 cm olmalıdır."},
    {9, "bag.jpg", "Bağlarda mildiyö için ilk koruyucu ilaçlama zamanı yaklaşıyor",
     "Manisa, İzmir ve Denizli'deki bağlarda sürgünler 10-15 cm uzunluğa ulaştı. Son yağışlarla "
     "birlikte mildiyö için uygun koşullar oluşmaya başladı.\n\nSürgün boyu 25 cm'yi geçmeden ve "
     "yağıştan önce yapılacak koruyucu uygulama, hastalığın yaprak ve salkımlara bulaşmasını "
     "büyük ölçüde önler. Tarım il müdürlüklerinin tahmin ve erken uyarı duyurularını takip etmeyi "
     "unutmayınız."},
    {12, "traktor.jpg", "Pülverizatör kalibrasyonu ile ilaçta yüzde 20'ye varan tasarruf",
     "Yanlış ayarlanmış bir pülverizatör ya fazla ilaç atarak maliyeti ve kalıntı riskini artırır ya da "
     "az ilaç atarak etkinin düşmesine yol açar. Sezon başında yapılacak basit bir kalibrasyon, "
     "dekara atılan ilaç miktarını doğru belirlemenin en kolay yoludur.\n\nMemelerin aşınıp "
     "aşınmadığını bir dakikalık debi ölçümüyle kontrol edin, aşınmış memeleri değiştirin ve "
     "çalışma hızınızı sabit tutun. Bölge temsilcilerimiz bayilerimizde ücretsiz kalibrasyon günleri "
     "düzenliyor."},
    {16, "hasat.jpg", "Kanola hasadında dane kaybını azaltmanın yolları",
     "Kanolada kaplar olgunlaştıkça çatlamaya yatkın hâle gelir; geç kalınan hasatta dekara 30-40 kg "
     "dane kaybı görülebilir. Hasat zamanı, kapsüllerin yüzde 60-70'inin kahverengiye döndüğü ve "
     "danelerin sertleştiği dönemdir.\n\nBiçerdöverde yan bıçak kullanılması, devir ayarının "
     "düşürülmesi ve hasadın sabah nemli saatlerinde yapılması kayıpları belirgin biçimde azaltır."},
    {20, "sera.jpg", "Seralarda kış sonu havalandırmasına dikkat",
     "Gündüz ile gece arasındaki sıcaklık farkının arttığı bu dönemde seralarda nem yoğuşması "
     "artıyor. Yaprak üzerinde uzun süre kalan nem, kurşuni küf ve mildiyö gibi hastalıkların "
     "başlıca nedenidir.\n\nÖğle saatlerinde yan ve çatı havalandırmalarını açarak nemi dışarı atmak, "
     "bitki sıklığını korumak ve alt yaprakları temizlemek hastalık baskısını azaltır."},
    {25, "bugday.jpg", "Buğdayda sarı pas için tarlanızı haftada bir kontrol edin",
     "Serin ve nemli geçen ilkbahar haftalarında buğdayda sarı pas hızla yayılabiliyor. Yapraklarda "
     "damarlar boyunca dizilen sarı püstüller hastalığın ilk belirtisidir.\n\nHastalığa dayanıklı "
     "çeşitlerin seçimi ve dengeli azotlu gübreleme en önemli önlemlerdir. Belirtiler bayrak "
     "yaprağa ulaşmadan yapılan uygulamalar verim kaybını önler."},
    {31, "misir.jpg", "Mısırda koçan kurduna karşı feromon tuzağı ile izleme",
     "Koçan kurdu ve mısır kurdu, özellikle ikinci ürün mısırda önemli verim kayıplarına neden oluyor. "
     "Tarlaya asılan feromon tuzakları ile ergin uçuşunu takip etmek, mücadele zamanını doğru "
     "belirlemenin en güvenilir yoludur.\n\nTuzaklar dekara bir adet olacak şekilde bitki boyunun "
     "biraz üzerine asılmalı ve haftada iki kez kontrol edilmelidir."},
    {38, "domates.jpg", "Domateste çiçek burnu çürüklüğü hastalık değil, beslenme sorunu",
     "Meyvenin uç kısmında başlayan kahverengi, içe çökük lekeler çoğu zaman bir hastalık sanılır. "
     "Oysa çiçek burnu çürüklüğü, düzensiz sulama nedeniyle kalsiyumun meyveye yeterince "
     "taşınamamasından kaynaklanır.\n\nDüzenli ve dengeli sulama, aşırı azotlu gübrelemeden kaçınma ve "
     "gerektiğinde yapraktan kalsiyum uygulaması sorunu önler."},
    {45, "hasat.jpg", "Ayçiçeğinde hasat sonrası anız yönetimi",
     "Ayçiçeği hasadından sonra tarlada kalan saplar, bir sonraki ürün için hem toprak organik maddesi "
     "hem de hastalık kaynağı olabilir.\n\nAnızın parçalanarak toprağa karıştırılması, sap "
     "çürüklüğü etmenlerinin kışı geçirmesini zorlaştırır. Anız yakmak toprağın canlılığına zarar "
     "verdiği gibi yasal olarak da yasaktır."},
    {53, "traktor.jpg", "Bitki koruma ürünlerinin depolanmasında altı altın kural",
     "İlaçlar çocukların ve hayvanların ulaşamayacağı, kilitli, serin ve kuru bir yerde, orijinal "
     "ambalajlarında saklanmalıdır. Gıda ve yemlerle aynı yerde depolanmamalı, etiketleri sökülmemelidir.\n\n"
     "Boş ambalajlar üç kez çalkalanıp delinmeli ve toplama noktalarına teslim edilmelidir. Açılmış "
     "ambalajların ağzı sıkıca kapatılmalı, sıvı ürünler ayakta durmalıdır."},
    {62, "bag.jpg", "Bağda kış budaması ile verim ve kalite dengesi",
     "Kış budaması, bağda hem o yılın ürün miktarını hem de omcanın gelecekteki sağlığını belirler. "
     "Çok göz bırakılan omcalarda salkım sayısı artsa da tane iriliği ve şeker oranı düşer.\n\n"
     "Budama aletlerinin her omcadan sonra dezenfekte edilmesi, odun hastalıklarının bulaşmasını "
     "önlemenin en kolay yoludur."},
    {70, "sera.jpg", "Ekinora'dan çiftçilere yeni dönem bilgi yarışması",
     "Ekinora uygulamasında bahar bilgi yarışması başladı. Bitki koruma, iyi tarım uygulamaları ve "
     "ürünlerimiz üzerine hazırlanan soruları yanıtlayan çiftçilerimiz, traktör ve tarım "
     "ekipmanlarının verileceği çekilişe katılma hakkı kazanıyor.\n\nYarışmaya uygulamanın "
     "Yarışmalar bölümünden katılabilirsiniz. Katılım koşulları Bilgilendirme bölümünde yer alıyor."},
};

Json withAddresses(Json item, const std::string& baseUrl) {
    if (item.contains("thumbnailUrl"))
        item["thumbnailUrl"] = baseUrl + "/static/news/thumbs/" + item["thumbnailUrl"].get<std::string>();
    if (item.contains("imageUrl"))
        item["imageUrl"] = baseUrl + "/static/news/" + item["imageUrl"].get<std::string>();
    return item;
}

Json newsList(Database& db, const ApiCall& call) {
    Params p(call);
    const Answer more = p.answer("ptoken");
    if (more == Answer::Invalid) {
        p.fail("ptoken", BadPageFlag);
        return p.rejection();
    }
    Json news = feed::page(db, call.userId, "news", more == Answer::Yes, NewsPageSize,
                           [&](std::int64_t offset, std::int64_t limit) {
                               return db.query("SELECT id, header, news_date AS newsDate, thumbnail AS thumbnailUrl"
                                               " FROM news ORDER BY news_date DESC, id DESC LIMIT ? OFFSET ?",
                                               {limit, offset});
                           });
    for (auto& item : news) item = withAddresses(std::move(item), call.baseUrl);
    return envelope::success(Json{{"news", std::move(news)}});
}

Json newsDetail(Database& db, const ApiCall& call) {
    Params p(call);
    const auto id = p.requiredInteger("id", NotFound, NotFound);
    if (!p.ok()) return p.rejection();
    auto item = db.queryRow("SELECT id, header, news_date AS newsDate, long_description AS longDescription,"
                            " image AS imageUrl FROM news WHERE id = ?",
                            {*id});
    if (!item) {
        p.fail("id", NotFound);
        return p.rejection();
    }
    return envelope::success(Json{{"newsItem", withAddresses(std::move(*item), call.baseUrl)}});
}

} // namespace

void seedNews(Database& db, const Clock& clock) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM news") > 0) return;
    const std::int64_t now = clock ? clock() : systemSeconds();
    // Morning of each day, so that the dates read like a desk's publishing hours.
    const std::int64_t today = now - now % 86400 + 6 * 3600;
    db.transaction([&] {
        // Oldest first, so that ids follow the dates.
        for (auto it = std::rbegin(Items); it != std::rend(Items); ++it)
            db.execute("INSERT INTO news (header, news_date, long_description, image, thumbnail)"
                       " VALUES (?, ?, ?, ?, ?)",
                       {std::string(it->header), today - std::int64_t(it->daysAgo) * 86400,
                        std::string(it->text), std::string(it->picture), std::string(it->picture)});
    });
}

void registerNewsCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("agricultural-news", Access::Account, newsList, db);
    dispatch.add("agricultural-news/detail", Access::Account, newsDetail, db);
}

} // namespace ekinora::server::news
