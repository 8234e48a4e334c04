// The Foundation-like conversions: format strings, descriptions, the value readers, member access
// and JSON decoding, with nil and the null object kept apart.

#include "platform/Application.h"
#include "platform/Foundation.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <climits>

using namespace ekinora::platform;

// A fatal stop must end with the fault code and must not let the caller go on.
#define VERIFY_FATAL(...)                                                                                          \
    do {                                                                                                           \
        const qsizetype before = endings.size();                                                                   \
        QVERIFY_THROWS_EXCEPTION(FatalStop, __VA_ARGS__);                                                          \
        QCOMPARE(endings.size(), before + 1);                                                                      \
        QCOMPARE(endings.last(), Application::FaultExitCode);                                                      \
    } while (false)

class FoundationTest : public QObject {
    Q_OBJECT
    Application* app = nullptr;
    QList<int> endings;

private slots:
    void initTestCase() {
        app = new Application(this);
        app->setEchoLog(false);
        app->setEnding([this](int code) { endings.append(code); });
    }
    void init() { endings.clear(); }

    void formatObjectsAsDescriptions() {
        QCOMPARE(stringWithFormat("%@", {nil()}), QStringLiteral("(null)"));
        QCOMPARE(stringWithFormat("%@", {QString()}), QStringLiteral("(null)"));
        QCOMPARE(stringWithFormat("%@", {nullObject()}), QStringLiteral("<null>"));
        QCOMPARE(stringWithFormat("%@", {Json(3.0)}), QStringLiteral("3"));
        QCOMPARE(stringWithFormat("%@", {Json(0.1)}), QStringLiteral("0.1"));
        QCOMPARE(stringWithFormat("%@", {Json(true)}), QStringLiteral("1"));
        QCOMPARE(stringWithFormat("%@", {Json(qint64(5321234567))}), QStringLiteral("5321234567"));
        QCOMPARE(stringWithFormat("Sayın %@, %@ puan", {QStringLiteral("Çiğdem Şahin"), Json(120)}),
                 QStringLiteral("Sayın Çiğdem Şahin, 120 puan"));
    }

    void formatIntegers() {
        QCOMPARE(stringWithFormat("%ld.%ld.%ld", {1L, 4L, 0L}), QStringLiteral("1.4.0"));
        QCOMPARE(stringWithFormat("%i/%d", {7, -12}), QStringLiteral("7/-12"));
        QCOMPARE(stringWithFormat("%lu", {4000000000UL}), QStringLiteral("4000000000"));
        QCOMPARE(stringWithFormat("%d", {QStringLiteral("42")}), QStringLiteral("42"));
        // Words of a device token: every bit of a 32-bit word, eight digits each.
        QCOMPARE(stringWithFormat("%08x", {qint64(0xffffffffU)}), QStringLiteral("ffffffff"));
        QCOMPARE(stringWithFormat("%08x", {qint64(0x1f)}), QStringLiteral("0000001f"));
        QCOMPARE(stringWithFormat("%08x", {-1}), QStringLiteral("ffffffff"));
        QCOMPARE(stringWithFormat("%X", {255}), QStringLiteral("FF"));
    }

    void formatFloatsAndLiterals() {
        QCOMPARE(stringWithFormat("%.1f", {2.45}), QStringLiteral("2.5"));
        QCOMPARE(stringWithFormat("%.2f", {7}), QStringLiteral("7.00"));
        QCOMPARE(stringWithFormat("%f", {1.5}), QStringLiteral("1.500000"));
        QCOMPARE(stringWithFormat("%.0f", {9.6}), QStringLiteral("10"));
        QCOMPARE(stringWithFormat("%%%d", {15}), QStringLiteral("%15"));
        QCOMPARE(stringWithFormat("100%%"), QStringLiteral("100%"));
        QCOMPARE(stringWithFormat("%s", {"abc"}), QStringLiteral("abc"));
        QCOMPARE(stringWithFormat("%c", {int('A')}), QStringLiteral("A"));
        // A format without arguments passes through unchanged.
        QCOMPARE(stringWithFormat("Hava durumu"), QStringLiteral("Hava durumu"));
    }

    void formatWidths() {
        QCOMPARE(stringWithFormat("%02d:%02d", {9, 5}), QStringLiteral("09:05"));
        QCOMPARE(stringWithFormat("%5d|", {42}), QStringLiteral("   42|"));
        QCOMPARE(stringWithFormat("%-5d|", {42}), QStringLiteral("42   |"));
        QCOMPARE(stringWithFormat("%05d", {-42}), QStringLiteral("-0042"));
        QCOMPARE(stringWithFormat("%+d", {3}), QStringLiteral("+3"));
        QCOMPARE(stringWithFormat("%.3d", {7}), QStringLiteral("007"));
        QCOMPARE(stringWithFormat("%6.2f|", {3.14159}), QStringLiteral("  3.14|"));
        QCOMPARE(stringWithFormat("%-6@|", {QStringLiteral("ab")}), QStringLiteral("ab    |"));
        // Wider than the width: nothing is cut.
        QCOMPARE(stringWithFormat("%2d", {12345}), QStringLiteral("12345"));
    }

    void describeNestedCollections() {
        const QJsonObject user{{"ad", "Ali Veli"},
                               {"id", 5},
                               {"il", "Konya"},
                               {"foto", QJsonValue::Null},
                               {"tarlalar", QJsonArray{QJsonObject{{"alan", 3}}, "x"}},
                               {"bos", QJsonArray{}}};
        const QString expected = QStringLiteral("{\n"
                                                "    ad = \"Ali Veli\";\n"
                                                "    bos =     (\n"
                                                "    );\n"
                                                "    foto = \"<null>\";\n"
                                                "    id = 5;\n"
                                                "    il = Konya;\n"
                                                "    tarlalar =     (\n"
                                                "                {\n"
                                                "            alan = 3;\n"
                                                "        },\n"
                                                "        x\n"
                                                "    );\n"
                                                "}");
        QCOMPARE(description(user), expected);
        QCOMPARE(description(QJsonArray{1, "a b"}), QStringLiteral("(\n    1,\n    \"a b\"\n)"));
        // A string on its own is itself, never quoted.
        QCOMPARE(description(Json(QStringLiteral("a b"))), QStringLiteral("a b"));
    }

    void readIntegersFromStrings() {
        QCOMPARE(intValue(Json("12abc")), 12);
        QCOMPARE(intValue(Json(" -3")), -3);
        QCOMPARE(intValue(Json("+8")), 8);
        QCOMPARE(intValue(Json("abc")), 0);
        QCOMPARE(intValue(Json("3.9")), 3);
        QCOMPARE(intValue(Json("0042")), 42);
        // Out of range, a text reads as the nearest end of the range.
        QCOMPARE(intValue(Json("5321234567")), INT_MAX);
        QCOMPARE(intValueOfString(QStringLiteral("5321234567")), INT_MAX);
        QCOMPARE(intValueOfString(QStringLiteral("-5321234567")), INT_MIN);
        QCOMPARE(integerValue(Json("5321234567")), Q_INT64_C(5321234567));
        QCOMPARE(integerValueOfString(QStringLiteral("99999999999999999999")), LLONG_MAX);
        QCOMPARE(integerValueOfString(QStringLiteral("-99999999999999999999")), LLONG_MIN);
    }

    void readDoublesFromStrings() {
        QCOMPARE(doubleValue(Json("2.5")), 2.5);
        QCOMPARE(doubleValue(Json(" -0.75kg")), -0.75);
        QCOMPARE(doubleValue(Json("1,5")), 1.0);
        QCOMPARE(doubleValue(Json("1.5e3")), 1500.0);
        QCOMPARE(doubleValue(Json("2e")), 2.0);
        QCOMPARE(doubleValue(Json(".5")), 0.5);
        QCOMPARE(doubleValue(Json("-")), 0.0);
        QCOMPARE(floatValue(Json("38.4")), 38.4f);
    }

    void readBooleansFromStrings_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        QTest::newRow("YES") << "YES" << true;
        QTest::newRow("yes") << "yes" << true;
        QTest::newRow("true") << "true" << true;
        QTest::newRow("True") << "True" << true;
        QTest::newRow("1") << "1" << true;
        QTest::newRow("7") << "7" << true;
        QTest::newRow("  +001") << "  +001" << true;
        QTest::newRow("0") << "0" << false;
        QTest::newRow("000") << "000" << false;
        QTest::newRow("no") << "no" << false;
        QTest::newRow("false") << "false" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("blank") << "   " << false;
        QTest::newRow("0.5") << "0.5" << false;
    }
    void readBooleansFromStrings() {
        QFETCH(QString, text);
        QFETCH(bool, expected);
        QCOMPARE(boolValue(Json(text)), expected);
    }

    void readNumbersBooleansAndNil() {
        QCOMPARE(intValue(Json(3.9)), 3);
        QCOMPARE(intValue(Json(-3.9)), -3);
        QCOMPARE(intValue(Json(true)), 1);
        QCOMPARE(integerValue(Json(qint64(5321234567))), Q_INT64_C(5321234567));
        QCOMPARE(doubleValue(Json(false)), 0.0);
        QCOMPARE(boolValue(Json(0)), false);
        QCOMPARE(boolValue(Json(2)), true);
        QCOMPARE(boolValue(Json(0.5)), true);

        // Messaging nil gives zero.
        QCOMPARE(intValue(nil()), 0);
        QCOMPARE(integerValue(nil()), 0);
        QCOMPARE(doubleValue(nil()), 0.0);
        QCOMPARE(floatValue(nil()), 0.0f);
        QCOMPARE(boolValue(nil()), false);
        QCOMPARE(endings.size(), 0);
    }

    void readersStopOnTheNullObjectAndCollections() {
        VERIFY_FATAL(intValue(nullObject()));
        VERIFY_FATAL(integerValue(nullObject()));
        VERIFY_FATAL(doubleValue(nullObject()));
        VERIFY_FATAL(floatValue(nullObject()));
        VERIFY_FATAL(boolValue(nullObject()));
        VERIFY_FATAL(intValue(QJsonArray{1}));
        VERIFY_FATAL(boolValue(QJsonObject{{"a", 1}}));
    }

    void members() {
        const Json data = decodeJson(R"({"user":{"name":"Ayşe","photo":null},"list":[1,2],"text":"x"})");
        QCOMPARE(member(data, "user").isObject(), true);
        QCOMPARE(path(data, {"user", "name"}), Json("Ayşe"));
        QVERIFY(isNullObject(path(data, {"user", "photo"})));
        QVERIFY(isNil(path(data, {"user", "phone"})));
        QVERIFY(isNil(member(nil(), "anything")));
        // Through nil, a chain stays nil.
        QVERIFY(isNil(path(data, {"absent", "deeper", "deepest"})));
        QCOMPARE(endings.size(), 0);

        VERIFY_FATAL(member(nullObject(), "name"));
        VERIFY_FATAL(path(data, {"user", "photo", "url"}));
        VERIFY_FATAL(member(member(data, "text"), "name"));
        VERIFY_FATAL(member(member(data, "list"), "name"));
        VERIFY_FATAL(member(Json(3), "name"));
    }

    void elementsAndCounts() {
        const Json list = QJsonArray{"a", "b"};
        QCOMPARE(element(list, 1), Json("b"));
        QVERIFY(isNil(element(nil(), 0)));
        QCOMPARE(count(list), 2);
        QCOMPARE(count(QJsonObject{{"a", 1}}), 1);
        QCOMPARE(count(nil()), 0);
        VERIFY_FATAL(element(list, 2));
        VERIFY_FATAL(element(list, -1));
        VERIFY_FATAL(element(nullObject(), 0));
        VERIFY_FATAL(count(nullObject()));
        VERIFY_FATAL(count(Json("ab")));
    }

    void valueOrNilDropsOnlyTheNullObject() {
        QVERIFY(isNil(valueOrNil(nullObject())));
        QVERIFY(isNil(valueOrNil(nil())));
        QCOMPARE(valueOrNil(Json(0)), Json(0));
        QCOMPARE(valueOrNil(Json("")), Json(""));
        QCOMPARE(valueOrNil(Json(false)), Json(false));
        QCOMPARE(valueOrNil(QJsonArray{}), Json(QJsonArray{}));
    }

    void decodeJsonTopLevel() {
        const Json object = decodeJson(R"({"status":200,"data":null})");
        QVERIFY(object.isObject());
        QVERIFY(isNullObject(member(object, "data")));
        QVERIFY(isNil(member(object, "message")));
        QCOMPARE(decodeJson("[1,\"iki\"]"), Json(QJsonArray{1, "iki"}));
        QVERIFY(isNil(decodeJson("<html>Hata</html>")));
        QVERIFY(isNil(decodeJson("{\"a\":")));
        QVERIFY(isNil(decodeJson("")));
        QVERIFY(isNil(decodeJson("3")));
        QVERIFY(isNil(decodeJson("\"text\"")));
        QVERIFY(isNil(decodeJson("null")));
        QCOMPARE(encodeJson(Json("a\"b")), QByteArray("\"a\\\"b\""));
        QCOMPARE(encodeJson(nullObject()), QByteArray("null"));
    }

    void stringHelpers() {
        QVERIFY(isString(Json("evet"), "evet"));
        QVERIFY(!isString(nil(), ""));
        QVERIFY(!isString(Json(1), "1"));
        QVERIFY(stringOrNull(Json(1)).isNull());
        QVERIFY(stringOrNull(nullObject()).isNull());
        QCOMPARE(stringOrNull(Json("")), QString(""));
        QVERIFY(!stringOrNull(Json("")).isNull());
    }

    void formatDates() {
        const QDateTime when(QDate(2026, 5, 14), QTime(9, 5, 3));
        QCOMPARE(formatDate(when, "yyyy-MM-dd HH:mm:ss"), QStringLiteral("2026-05-14 09:05:03"));
        QCOMPARE(formatDate(QDateTime(QDate(2026, 1, 2), QTime(21, 0)), "yyyy-MM-dd HH:mm:ss"),
                 QStringLiteral("2026-01-02 21:00:00"));
        QCOMPARE(formatDate(when, "dd.MM.yyyy"), QStringLiteral("14.05.2026"));
        QCOMPARE(formatDate(when, "EEEE"), QStringLiteral("Perşembe"));
        // A time given in another zone is written in local time.
        QCOMPARE(formatDate(when.toUTC(), "yyyy-MM-dd HH:mm:ss"), QStringLiteral("2026-05-14 09:05:03"));
    }
};

QTEST_GUILESS_MAIN(FoundationTest)
#include "tst_foundation.moc"
