#include "info/SiteInfo.h"

#include <nlohmann/json.hpp>

namespace ekinora::server::info {

namespace {

struct Block {
    const char* item;
    const char* type;
    const char* content;
};

// The app splits the document by position: 1 to 11 under the first heading, 13 onwards under the
// second. Keep the headings at 0 and 12.
const Block Blocks[] = {
    {"headline", "main", "Bitki Koruma Ürünlerinin Güvenli Kullanımı"},
    {"paragraph", "standard",
     "Bitki koruma ürünleri, etiketinde yazan bitki, hastalık ve zararlı için, önerilen doz ve zamanda "
     "kullanıldığında güvenlidir. Aşağıdaki kurallar hem sizin hem çevrenizin sağlığı içindir."},
    {"headline", "subtitle", "Uygulamadan önce"},
    {"paragraph", "standard",
     "Etiketi baştan sona okuyun. Ürünün ruhsatlı olduğu bitkiyi, dozu, hasat öncesi bekleme süresini "
     "ve karışabilirlik bilgisini not edin."},
    {"paragraph", "standard",
     "Pülverizatörünüzü kalibre edin, memeleri ve hortumları sızıntıya karşı kontrol edin. İlaç tankını "
     "su kaynaklarından en az 10 metre uzakta doldurun."},
    {"headline", "subtitle", "Kişisel koruyucu donanım"},
    {"paragraph", "standard",
     "Nitril eldiven, tulum, çizme, koruyucu gözlük ve etikette belirtilen maskeyi ilaç hazırlarken ve "
     "uygularken mutlaka kullanın. Uygulama sırasında yemek yemeyin, sigara içmeyin."},
    {"headline", "subtitle", "Uygulama sırasında"},
    {"paragraph", "standard",
     "Rüzgâr hızı saatte 10 kilometreyi aştığında, yağış beklendiğinde ve günün en sıcak saatlerinde "
     "ilaçlama yapmayın. Arıların aktif olduğu saatlerde çiçekli bitkilere uygulama yapmaktan kaçının."},
    {"paragraph", "standard",
     "Komşu tarlalara ve su kaynaklarına sürüklenmeyi önlemek için düşük sürüklenmeli meme kullanın ve "
     "etikette belirtilen tampon mesafelere uyun."},
    {"headline", "subtitle", "Uygulamadan sonra"},
    {"paragraph", "standard",
     "Ekipmanı tarlada, su kaynaklarından uzakta yıkayın. Eldivenlerinizi çıkarmadan önce yıkayın, "
     "ardından ellerinizi ve yüzünüzü sabunla temizleyin. Tarlaya yeniden giriş süresine uyun."},
    {"headline", "main", "Depolama ve Boş Ambalajlar"},
    {"paragraph", "standard",
     "İlaçları orijinal ambalajlarında, etiketleriyle birlikte, kilitli, serin ve kuru bir depoda "
     "saklayın. Gıda, yem ve tohumla aynı yerde depolamayın."},
    {"headline", "subtitle", "Üç kez çalkalama"},
    {"paragraph", "standard",
     "Boşalan ambalajı dörtte biri dolacak kadar suyla doldurun, kapağını kapatıp 30 saniye çalkalayın "
     "ve suyu ilaç tankına boşaltın. İşlemi üç kez tekrarlayın."},
    {"paragraph", "standard",
     "Çalkalanan ambalajı yeniden kullanılmaması için delin; ambalajları yakmayın, gömmeyin, çöpe ya da "
     "suya atmayın."},
    {"headline", "subtitle", "Toplama noktaları"},
    {"paragraph", "standard",
     "Delinmiş ambalajları bayilerimizdeki ve belediyelerin toplama noktalarındaki kutulara bırakın. Size "
     "en yakın toplama noktasını bölge temsilcinize sorabilirsiniz."},
};

} // namespace

std::optional<std::string> siteInfoDocument(const std::string& path) {
    if (path != SiteInfoPath) return std::nullopt;
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const auto& block : Blocks)
        list.push_back({{"item", block.item}, {"type", block.type}, {"content", block.content}});
    return list.dump();
}

} // namespace ekinora::server::info
