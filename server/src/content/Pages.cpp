#include "content/Pages.h"

#include "core/Envelope.h"
#include "core/Params.h"

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
<p>Ekinora mobil uygulaması (“Uygulama”), merkezi Ankara'da bulunan Ekinora Tarım Ürünleri A.Ş. (“Şirket”) tarafından çiftçilerimize ve bayilerimize tarlalarını takip etmeleri, ziraat mühendislerimize soru sormaları, hava durumu ve piyasa bilgilerine ulaşmaları, ürünlerimiz hakkında bilgi edinmeleri ve Bereket Kulübü avantajlarından yararlanmaları amacıyla ücretsiz olarak sunulmaktadır. Uygulamaya üye olan ya da Uygulamayı kullanan herkes (“Kullanıcı”) bu şartları okumuş, anlamış ve kabul etmiş sayılır. Şartları kabul etmiyorsanız lütfen Uygulamayı kullanmayınız.</p>
<p><b>1. Üyelik.</b> Üyelik, cep telefonu numarası ve bu numaraya gönderilen tek kullanımlık SMS doğrulama kodu ile yapılır; Uygulamada şifre kullanılmaz. Kullanıcı, üyelik sırasında verdiği ad, soyad, e-posta, il, ilçe ve tarla bilgilerinin doğru ve güncel olmasından, telefonunun ve hesabının güvenliğinden kendisi sorumludur. Doğrulama kodunu hiç kimseyle paylaşmayınız; Şirket çalışanları sizden hiçbir koşulda bu kodu istemez. Bir telefon numarası ile yalnızca bir hesap açılabilir.</p>
<p><b>2. Bayi üyeliği.</b> Bayi olarak kayıt olan Kullanıcının bayi adı, vergi numarası ve T.C. kimlik numarası Şirket tarafından incelenir. Bayi hesabı, bu inceleme tamamlanıp Şirket onay verdikten sonra kullanıma açılır; onaya kadar hesapla giriş yapılamaz. Şirket, eksik ya da hatalı bilgi veren başvuruları gerekçe göstermeksizin reddedebilir.</p>
<p><b>3. İçerik ve tavsiyeler.</b> Uygulamadaki ürün bilgileri, ürün takvimleri, ilaçlama programları ve ziraat mühendislerimizin yanıtları genel bilgilendirme amaçlıdır ve tarlanızın koşullarını yerinde görmeden verilir. Bitki koruma ürünlerini kullanmadan önce mutlaka ambalaj üzerindeki etiket bilgilerini okuyunuz; önerilen dozlara, uygulama zamanlarına ve hasat öncesi bekleme sürelerine uyunuz, kişisel koruyucu donanım kullanınız. Hava durumu tahminleri ve piyasa fiyatları üçüncü taraf kaynaklardan alınır; gecikmeli, eksik ya da hatalı olabilir ve yalnızca bilgi amaçlıdır.</p>
<p><b>4. Kullanıcının yükümlülükleri.</b> Kullanıcı, Uygulamayı yürürlükteki mevzuata ve genel ahlaka uygun biçimde kullanmayı; mesajlarında başkalarının haklarını ihlal eden, yanıltıcı, hakaret içeren ya da reklam niteliğindeki içerikleri paylaşmamayı; Uygulamanın işleyişini bozacak, başka kullanıcıların hesaplarına erişmeye çalışacak girişimlerde bulunmamayı kabul eder. Kullanıcının paylaştığı fotoğraf ve videoların tarlasına ve ürününe ait olması beklenir.</p>
<p><b>5. Bereket puanları.</b> Ürün ambalajlarındaki kodların okutulmasıyla kazanılan puanlar kişiye özeldir, başkasına devredilemez ve nakde çevrilemez. Her kod yalnızca bir kez okutulabilir. Puanların kullanımı, Bereket Kulübü'nün o dönemki kampanya koşullarına bağlıdır. Kötüye kullanım, sahte kod ya da sistem hatasından yararlanma tespit edilen hesapların puanları önceden bildirim yapılmaksızın iptal edilebilir.</p>
<p><b>6. Fikri mülkiyet.</b> Uygulamadaki metinler, görseller, logolar, ürün adları ve yazılım Şirkete ya da lisans verenlerine aittir. Kullanıcı bunları Şirketin yazılı izni olmadan çoğaltamaz, dağıtamaz ve ticari amaçla kullanamaz.</p>
<p><b>7. Sorumluluğun sınırı.</b> Şirket, Uygulamanın kesintisiz ve hatasız çalışması için gereken özeni gösterir; ancak bakım çalışmaları, bağlantı sorunları ya da mücbir sebeplerden doğan kesintilerden, Kullanıcının bilgileri yanlış girmesinden ve içeriklerin Kullanıcı tarafından etiket bilgilerine aykırı biçimde uygulanmasından doğan zararlardan sorumlu tutulamaz.</p>
<p><b>8. Kişisel veriler.</b> Kişisel verileriniz, <i>Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni</i>'nde açıklandığı şekilde işlenir. Ticari elektronik ileti izinlerinizi Uygulamadan dilediğiniz zaman değiştirebilirsiniz.</p>
<p><b>9. Değişiklikler ve fesih.</b> Şirket, bu şartları ve Uygulamanın içeriğini önceden bildirmeksizin değiştirme hakkını saklı tutar. Güncel metin her zaman Uygulamanın <i>Bilgilendirme</i> bölümünde yer alır; değişiklikten sonra Uygulamanın kullanılması yeni şartların kabulü anlamına gelir. Kullanıcı üyeliğini dilediği zaman sona erdirebilir; bu şartlara aykırı davranan Kullanıcıların hesapları Şirket tarafından askıya alınabilir ya da kapatılabilir.</p>
<p><b>10. Uygulanacak hukuk.</b> Bu şartlar Türkiye Cumhuriyeti kanunlarına tabidir. Uyuşmazlıklarda Ankara Mahkemeleri ve İcra Daireleri yetkilidir; tüketici sıfatıyla hareket eden Kullanıcıların Tüketici Hakem Heyetlerine ve Tüketici Mahkemelerine başvuru hakları saklıdır.</p>
<p>Sorularınız için <a href="mailto:destek@ekinora.com.tr">destek@ekinora.com.tr</a> adresine yazabilir ya da hafta içi 08.30–17.30 saatleri arasında 0850 455 35 66 numaralı çağrı merkezimizi arayabilirsiniz.</p>)html"},

    {"kvkk", "Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni",
     R"html(<h3>Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni</h3>
<p>Ekinora Tarım Ürünleri A.Ş. (“Şirket”) olarak, veri sorumlusu sıfatıyla, 6698 sayılı Kişisel Verilerin Korunması Kanunu (“Kanun”) uyarınca Ekinora mobil uygulaması (“Uygulama”) üzerinden paylaştığınız kişisel verilerinizi hangi amaçlarla işlediğimizi, kimlere aktarabileceğimizi ve Kanun kapsamındaki haklarınızı bu metinle bilginize sunuyoruz.</p>
<p><b>1. İşlenen kişisel veriler.</b> Kimlik bilgileriniz (adınız, soyadınız; bayiler için ayrıca T.C. kimlik numarası), iletişim bilgileriniz (cep telefonu numaranız, e-posta adresiniz), konum bilgileriniz (il ve ilçeniz), tarım faaliyetinize ilişkin bilgiler (tarlalarınızdaki ürünler, tarla büyüklükleri, kullandığınız zirai ürünler, ürün dönemleri), mesajlarınızda paylaştığınız yazı, fotoğraf ve videolar, okuttuğunuz ürün kodları ve kazandığınız Bereket puanları, yarışma yanıtlarınız, bayiler için bayi adı ve vergi numarası ile cihazınıza ait bildirim kimliği ve Uygulamayı kullanımınıza ilişkin işlem kayıtları.</p>
<p><b>2. İşleme amaçları.</b> Kişisel verileriniz; üyeliğinizin oluşturulması ve telefon numaranızın doğrulanması, bölgenize ve ürünlerinize uygun hava durumu, ürün takvimi ve zirai bilgilerin sunulması, sorularınızın ziraat mühendislerimizce yanıtlanması, bayi başvurularının değerlendirilmesi ve bayi satışlarının kaydı, Bereket puanlarınızın hesaplanması, yarışma, çekiliş ve kampanyaların yürütülmesi, size en yakın bölge temsilcimizin belirlenmesi, bilgi güvenliğinin sağlanması, talep ve şikâyetlerinizin sonuçlandırılması ile yasal yükümlülüklerimizin yerine getirilmesi amaçlarıyla işlenir. Ticari elektronik ileti gönderimi yalnızca ayrıca onay vermeniz hâlinde yapılır.</p>
<p><b>3. Toplama yöntemi ve hukuki sebep.</b> Verileriniz Uygulama üzerinden elektronik ortamda, sizin tarafınızdan girilerek ya da Uygulamayı kullanımınız sırasında otomatik yollarla toplanır. Bu veriler Kanunun 5. maddesinde belirtilen bir sözleşmenin kurulması ve ifası, veri sorumlusunun hukuki yükümlülüğünü yerine getirmesi, bir hakkın tesisi, kullanılması veya korunması ve ilgili kişinin temel hak ve özgürlüklerine zarar vermemek kaydıyla veri sorumlusunun meşru menfaati hukuki sebeplerine; ticari elektronik iletiler bakımından ise açık rızanıza dayanılarak işlenir.</p>
<p><b>4. Aktarım.</b> Verileriniz yalnızca yukarıdaki amaçlarla sınırlı olarak ve gerekli güvenlik önlemleri alınarak bölge temsilcilerimize, yetkili bayilerimize, barındırma, SMS ve e-posta hizmeti aldığımız yurt içindeki tedarikçilerimize, yarışma çekilişlerini yürüten noterliklere ve talep hâlinde yetkili kamu kurum ve kuruluşlarına aktarılabilir. Verileriniz yurt dışına aktarılmaz.</p>
<p><b>5. Saklama süresi.</b> Verileriniz üyeliğiniz sürdüğü müddetçe ve üyeliğinizin sona ermesinden sonra ilgili mevzuatta öngörülen zamanaşımı süreleri boyunca saklanır; bu sürelerin sonunda silinir, yok edilir ya da anonim hâle getirilir.</p>
<p><b>6. Haklarınız.</b> Kanunun 11. maddesi uyarınca; kişisel verilerinizin işlenip işlenmediğini öğrenme, işlenmişse buna ilişkin bilgi talep etme, işlenme amacını ve amacına uygun kullanılıp kullanılmadığını öğrenme, yurt içinde veya yurt dışında aktarıldığı üçüncü kişileri bilme, eksik veya yanlış işlenmişse düzeltilmesini, Kanunda öngörülen şartlar çerçevesinde silinmesini veya yok edilmesini isteme, bu işlemlerin aktarıldığı üçüncü kişilere bildirilmesini isteme, münhasıran otomatik sistemlerle analiz edilmesi sonucunda aleyhinize bir sonucun ortaya çıkmasına itiraz etme ve kanuna aykırı işlenmesi sebebiyle zarara uğramanız hâlinde zararın giderilmesini talep etme haklarına sahipsiniz.</p>
<p><b>7. Başvuru.</b> Haklarınıza ilişkin taleplerinizi kimliğinizi tespit edici bilgilerle birlikte <a href="mailto:kvkk@ekinora.com.tr">kvkk@ekinora.com.tr</a> adresine e-posta ile ya da Şirketimizin adresine yazılı olarak iletebilirsiniz. Başvurunuz, niteliğine göre en kısa sürede ve en geç otuz gün içinde ücretsiz olarak sonuçlandırılır. Başvurunuzun reddedilmesi, verilen cevabı yetersiz bulmanız veya süresinde cevap verilmemesi hâlinde Kişisel Verileri Koruma Kurulu'na (<a href="https://www.kvkk.gov.tr">www.kvkk.gov.tr</a>) şikâyette bulunabilirsiniz.</p>)html"},

    {"etk", "Ticari Elektronik İleti Onay Metni", R"html(<h3>Ticari Elektronik İleti Onay Metni</h3>
<p>6563 sayılı Elektronik Ticaretin Düzenlenmesi Hakkında Kanun ve Ticari İletişim ve Ticari Elektronik İletiler Hakkında Yönetmelik uyarınca; Ekinora Tarım Ürünleri A.Ş. tarafından kampanyalar, yeni ürünler, ilaçlama ve gübreleme dönemi hatırlatmaları, bölgeme özel zirai uyarılar, etkinlikler, yarışmalar ve Bereket Kulübü fırsatları hakkında tarafıma ticari elektronik ileti gönderilmesine, Uygulamada seçtiğim kanallar için onay veriyorum.</p>
<p><b>SMS:</b> cep telefonu numarama kısa mesaj gönderilmesi. <b>E-posta:</b> e-posta adresime ileti gönderilmesi. <b>Reklam:</b> ilgi alanlarıma ve tarlalarımdaki ürünlere göre hazırlanmış tanıtımların Uygulama bildirimleriyle iletilmesi.</p>
<p>Bu onay için iletişim bilgilerimin İleti Yönetim Sistemi'ne kaydedilebileceğini biliyorum. Onayımı dilediğim zaman, hiçbir gerekçe göstermeden ve ücretsiz olarak Uygulamanın <i>Profilim</i> ekranından, iletilerdeki ret bağlantısından, İleti Yönetim Sistemi üzerinden ya da <a href="mailto:iletisim@ekinora.com.tr">iletisim@ekinora.com.tr</a> adresine yazarak geri alabilirim; ret bildirimim en geç üç iş günü içinde işleme alınır.</p>
<p>Onay vermemem üyeliğimi ve Uygulamanın kullanımını hiçbir şekilde etkilemez; yalnızca kampanya ve duyurulardan haberdar olamam. Hesabıma ilişkin doğrulama kodları ve işlem bildirimleri ticari ileti sayılmaz ve onayımdan bağımsız olarak gönderilir.</p>)html"},

    {"yarisma-kosullar", "Yarışma Şart ve Koşullar", R"html(<h3>Yarışma Şart ve Koşullar</h3>
<p>Bu koşullar, Ekinora Tarım Ürünleri A.Ş. (“Şirket”) tarafından Ekinora mobil uygulamasında (“Uygulama”) düzenlenen bilgi yarışmalarına ve bunlara bağlı çekilişlere uygulanır. Yarışmaya katılan herkes bu koşulları kabul etmiş sayılır.</p>
<p><b>1. Katılım.</b> Yarışmalara 18 yaşını doldurmuş, Türkiye'de yerleşik ve Uygulamaya çiftçi ya da Bereket Kulübü üyesi olarak kayıtlı her kullanıcı katılabilir. Şirket ve bağlı şirketlerinin çalışanları, bayiler ve bayi çalışanları, yarışmanın hazırlanmasında görev alan ajans çalışanları ile bunların birinci derece yakınları katılamaz; katılmış olsalar bile ödül kazanamazlar.</p>
<p><b>2. Süre ve yanıtlar.</b> Her yarışma, Uygulamada ilan edilen başlangıç ve bitiş tarihleri arasında açıktır. Her üye bir yarışmaya yalnızca bir kez katılabilir ve yanıtlarını gönderdikten sonra değiştiremez. Sorular ürünlerimiz, bitki koruma ve iyi tarım uygulamaları üzerinedir; tüm soruları süresi içinde doğru yanıtlayan üyeler o yarışmanın çekilişine katılmaya hak kazanır.</p>
<p><b>3. Çekiliş.</b> Çekiliş, yarışmanın bitişinden sonraki 30 gün içinde noter huzurunda, bilgisayar ortamında yapılır. Her yarışma için ilan edilen sayıda asıl ve yedek talihli belirlenir. Talihliler Uygulamanın <i>Çekiliş</i> bölümünde adlarının baş harfleri ve illeriyle ilan edilir ve Uygulamaya kayıtlı telefon numaralarından aranır.</p>
<p><b>4. Ödülün teslimi.</b> İlandan sonraki 15 gün içinde kendisine ulaşılamayan, istenen belgeleri (kimlik fotokopisi ve teslim tutanağı) süresinde iletmeyen ya da katılım koşullarını taşımadığı anlaşılan talihlinin hakkı sırasıyla yedek talihliye geçer. Ödüller, talihlinin Uygulamada kayıtlı il ve ilçesindeki en yakın bayimiz aracılığıyla teslim edilir.</p>
<p><b>5. Ödüller.</b> Ödüller başka bir ürünle değiştirilemez, başkasına devredilemez ve nakde çevrilemez. Ödüllere ilişkin vergiler Şirket tarafından karşılanır; teslimden sonra doğacak tescil, sigorta ve benzeri giderler talihliye aittir.</p>
<p><b>6. Genel.</b> Şirket, hileli katılım tespit ettiği üyeleri yarışma dışında bırakma, zorunlu hâllerde yarışma tarihlerini ve koşullarını Uygulamada duyurmak kaydıyla değiştirme hakkını saklı tutar. Yarışmaya katılım, talihli olunması hâlinde adın baş harflerinin ve ilin ilan edilmesine onay verildiği anlamına gelir. Yarışmalara ilişkin sorularınızı <a href="mailto:yarisma@ekinora.com.tr">yarisma@ekinora.com.tr</a> adresine iletebilirsiniz.</p>)html"},
};

} // namespace

void seedPages(Database& db) {
    for (const auto& page : Pages)
        db.execute("INSERT OR IGNORE INTO pages (slug, name, text) VALUES (?, ?, ?)",
                   {std::string(page.slug), std::string(page.name), std::string(page.text)});
}

namespace {

Json page(Database& db, const ApiCall& call) {
    auto page = db.queryRow("SELECT slug, name, text FROM pages WHERE slug = ?",
                            {Params(call).text("slug").value_or("")});
    if (!page) return envelope::rejection({{"slug", PageNotFound}});
    return envelope::success(Json{{"page", std::move(*page)}});
}

} // namespace

void registerPageCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("page/detail", Access::Public, page, db);
}

} // namespace ekinora::server::content
