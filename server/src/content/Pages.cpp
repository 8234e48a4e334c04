#include "content/Pages.h"

#include "core/Envelope.h"

namespace ekinora::server::content {

namespace {

const std::string PageNotFound = "Sayfa bulunamadı.";

struct Page {
    const char* slug;
    const char* name;
    const char* text;
};

const Page Pages[] = {
    {"conditions-of-use", "Genel Kullanım Şartları", R"html(<h3>Genel Kullanım Şartları</h3>
<p>Ekinora mobil uygulaması (“Uygulama”), Ekinora Tarım Ürünleri A.Ş. (“Şirket”) tarafından çiftçilerimize ve bayilerimize tarlalarını takip etmeleri, ziraat mühendislerimize soru sormaları, hava durumu ve piyasa bilgilerine ulaşmaları amacıyla ücretsiz olarak sunulmaktadır. Uygulamaya üye olan herkes bu şartları okumuş ve kabul etmiş sayılır.</p>
<p><b>Üyelik.</b> Üyelik cep telefonu numarası ve bu numaraya gönderilen SMS doğrulama kodu ile yapılır. Üye, verdiği bilgilerin doğru ve güncel olmasından, hesabının ve telefonunun güvenliğinden kendisi sorumludur. Bayi üyelikleri Şirket tarafından incelenip onaylandıktan sonra kullanıma açılır.</p>
<p><b>İçerik.</b> Uygulamadaki ürün bilgileri, ilaçlama takvimleri ve mühendis önerileri genel bilgilendirme amaçlıdır. Bitki koruma ürünlerini kullanmadan önce mutlaka etiket bilgilerini okuyunuz; dozlara ve hasat öncesi bekleme sürelerine uyunuz. Hava durumu ve piyasa fiyatları üçüncü taraf kaynaklardan alınır ve gecikmeli ya da hatalı olabilir.</p>
<p><b>Bereket puanları.</b> Ürün ambalajlarındaki kodların okutulmasıyla kazanılan puanlar kişiye özeldir, devredilemez ve nakde çevrilemez. Kötüye kullanım tespit edilen hesapların puanları iptal edilebilir.</p>
<p><b>Değişiklikler.</b> Şirket, bu şartları ve Uygulamanın içeriğini önceden bildirmeksizin değiştirme hakkını saklı tutar. Güncel metin her zaman Uygulamanın <i>Bilgilendirme</i> bölümünde yer alır.</p>
<p>Sorularınız için <a href="mailto:destek@ekinora.com.tr">destek@ekinora.com.tr</a> adresine yazabilirsiniz.</p>)html"},

    {"kvkk", "Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni",
     R"html(<h3>Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni</h3>
<p>Ekinora Tarım Ürünleri A.Ş. olarak, veri sorumlusu sıfatıyla, 6698 sayılı Kişisel Verilerin Korunması Kanunu uyarınca Uygulama üzerinden paylaştığınız kişisel verilerinizi aşağıda açıklanan amaçlarla ve hukuka uygun olarak işlemekteyiz.</p>
<p><b>İşlenen veriler.</b> Adınız ve soyadınız, cep telefonu numaranız, e-posta adresiniz, il ve ilçe bilginiz, tarlalarınıza ait ürün ve alan bilgileri, mesajlarınızda paylaştığınız fotoğraf ve videolar, okuttuğunuz ürün kodları ile cihazınıza ait bildirim kimliği.</p>
<p><b>İşleme amaçları.</b> Üyeliğinizin oluşturulması ve doğrulanması, size bölgenize ve ürünlerinize uygun tarımsal bilgi sunulması, sorularınızın ziraat mühendislerimizce yanıtlanması, Bereket puanlarınızın hesaplanması, yarışma ve kampanyaların yürütülmesi ile yasal yükümlülüklerimizin yerine getirilmesi.</p>
<p><b>Aktarım.</b> Verileriniz yalnızca bu amaçlarla sınırlı olarak bölge temsilcilerimize, yetkili bayilerimize, barındırma ve SMS hizmeti aldığımız tedarikçilerimize ve talep hâlinde yetkili kamu kurumlarına aktarılabilir.</p>
<p><b>Haklarınız.</b> Kanunun 11. maddesi uyarınca verilerinizin işlenip işlenmediğini öğrenme, düzeltilmesini veya silinmesini isteme ve işlemeye itiraz etme haklarına sahipsiniz. Başvurularınızı <a href="mailto:kvkk@ekinora.com.tr">kvkk@ekinora.com.tr</a> adresine iletebilirsiniz.</p>)html"},

    {"etk", "Ticari Elektronik İleti Onay Metni", R"html(<h3>Ticari Elektronik İleti Onay Metni</h3>
<p>Ekinora Tarım Ürünleri A.Ş. tarafından; kampanyalar, yeni ürünler, ilaçlama dönemi hatırlatmaları, etkinlikler ve yarışmalar hakkında tarafıma SMS, e-posta ve uygulama bildirimi yoluyla ticari elektronik ileti gönderilmesine onay veriyorum.</p>
<p>Onayımı dilediğim zaman, hiçbir gerekçe göstermeden ve ücretsiz olarak, Uygulamanın <i>Profilim</i> ekranından, iletilerdeki ret bağlantısından ya da <a href="mailto:iletisim@ekinora.com.tr">iletisim@ekinora.com.tr</a> adresine yazarak geri alabileceğimi biliyorum.</p>
<p>Onay vermemem üyeliğimi ve Uygulamanın kullanımını etkilemez; yalnızca kampanya ve duyurulardan haberdar olamam.</p>)html"},

    {"yarisma-kosullar", "Yarışma Şart ve Koşullar", R"html(<h3>Yarışma Şart ve Koşullar</h3>
<p>Uygulamadaki bilgi yarışmalarına 18 yaşını doldurmuş, Türkiye'de yaşayan ve Uygulamaya çiftçi olarak kayıtlı her üye katılabilir. Şirket çalışanları, bayiler ve birinci derece yakınları katılamaz.</p>
<p>Her yarışma, Uygulamada ilan edilen tarihler arasında açıktır. Her üye bir yarışmaya yalnızca bir kez katılabilir; tüm soruları doğru yanıtlayan üyeler çekilişe katılmaya hak kazanır.</p>
<p>Çekiliş noter huzurunda yapılır; asıl ve yedek talihliler Uygulamanın <i>Çekiliş</i> bölümünde ilan edilir ve kayıtlı telefon numaralarından aranır. İlandan sonraki 15 gün içinde ulaşılamayan talihlinin hakkı yedeğe geçer.</p>
<p>Ödüller başka bir ürünle değiştirilemez ve nakde çevrilemez. Ödüllere ilişkin vergiler Şirket tarafından karşılanır.</p>)html"},
};

} // namespace

void seedPages(Database& db) {
    for (const auto& page : Pages)
        db.execute("INSERT OR IGNORE INTO pages (slug, name, text) VALUES (?, ?, ?)",
                   {std::string(page.slug), std::string(page.name), std::string(page.text)});
}

void registerPageCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("page/detail", false, [&db](const ApiCall& call) {
        auto page = db.queryRow("SELECT slug, name, text FROM pages WHERE slug = ?",
                                {call.text("slug").value_or("")});
        if (!page) return envelope::rejection(PageNotFound, {{"slug", PageNotFound}});
        return envelope::success(Json{{"page", std::move(*page)}});
    });
}

} // namespace ekinora::server::content
