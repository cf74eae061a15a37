#include "platform/desk/settings_file.h"
#include "sim/inputs.h"
#include "sim/places.h"
#include "tests/sim/simulator.h"

#include <map>

/* Values for `input` that it takes: all of a choice, the ends of a range. */
static std::vector<std::string> good_values(const sim::Input &input)
{
    std::vector<std::string> values;
    switch (input.kind) {
    case sim::Kind::CHOICE:
        for (const auto &[word, stored] : sim::choices(input))
            values.push_back(word);
        return values;
    case sim::Kind::NUMBER:
        return {std::to_string(sim::limits(input).first), std::to_string(sim::limits(input).second)};
    case sim::Kind::TEXT:
        return {"", "caf\xc3\xa9 = \\\\ \\xff \\\"1\\\"", std::string(sim::limits(input).second, 'x')};
    case sim::Kind::ADDRESS:
        return {"0.0.0.0", "10.64.64.64"};
    case sim::Kind::TIME:
        return {"1970-01-01T00:00:00", "2024-02-29T23:59:59", "2037-12-31T23:59:59"};
    case sim::Kind::ACTION:
        return {};
    }
    return {};
}

static std::vector<std::string> bad_values(const sim::Input &input)
{
    switch (input.kind) {
    case sim::Kind::CHOICE:
        return {"", "none such", " on", sim::choices(input)[0].first + " "};
    case sim::Kind::NUMBER:
        return {"", "-1", "+1", "1x", " 1", std::to_string(sim::limits(input).second + 1), "99999999999999999999"};
    case sim::Kind::TEXT:
        return {"\\q", "\\x00", std::string(1, '\0'), std::string(sim::limits(input).second + 1, 'x')};
    case sim::Kind::ADDRESS:
        return {"", "1.2.3", "1.2.3.256", "1.2.3.4 ", std::string("1.2.3.4\0x", 9)};
    case sim::Kind::TIME:
        return {"", "now", "2024-02-30T00:00:00", "1969-12-31T23:59:59", "2038-02-01T00:00:00", "2024-01-01T00:00:00Z"};
    case sim::Kind::ACTION:
        return {"on"};
    }
    return {};
}

/* "ID":"VALUE", as it stands in JSON. */
static std::string member(std::string_view id, const std::string &value)
{
    std::string quoted;
    for (const char c : value)
        quoted += (c == '\\' || c == '"' ? "\\" : "") + std::string(1, c);
    return "\"" + std::string(id) + "\":\"" + quoted + "\"";
}

TEST(Inputs, EachTakesItsValuesAndTellsThem)
{
    Simulator simulator("pause");
    for (const sim::Input &input : sim::router_inputs())
        for (const std::string &value : good_values(input)) {
            EXPECT_EQ(simulator.set(std::string(input.id), value), 204) << input.id << " " << value;
            EXPECT_TRUE(simulator.has(member(input.id, value))) << input.id << " " << value;
            simulator.set("clock.speed", "pause"); // nothing else moves
        }
}

TEST(Inputs, EachRefusesABadValueAndKeepsItsOwn)
{
    Simulator simulator("pause");
    const std::string before = simulator.state();
    for (const sim::Input &input : sim::router_inputs())
        for (const std::string &value : bad_values(input)) {
            const auto result = simulator.client->Post("/input/" + std::string(input.id), value, "text/plain");
            EXPECT_EQ(result->status, 400) << input.id << " " << value;
            EXPECT_TRUE(result->body.starts_with(std::string(input.id) + " takes")) << result->body;
        }
    EXPECT_EQ(simulator.state(), before);
}

TEST(Inputs, AreListedWithTheirRanges)
{
    Simulator simulator("pause");
    const std::string list = simulator.client->Get("/inputs")->body;
    for (const std::string line : {
             R"({"id":"wifi.radio","group":"Wireless","label":"Radio","kind":"choice","choices":["off","on"],)"
             R"("place":"settings key wifi_dot11_mode","value":"on"})",
             R"("kind":"number","least":0,"most":999,"place":"status file wireless_client","value":"3"})",
             R"("kind":"text","bytes":199,"place":"file tmp/lcd/lcd_info","value":""})",
             R"({"id":"key.up","group":"Keys","label":"Up","kind":"action","place":"key up"})",
         })
        EXPECT_NE(list.find(line), std::string::npos) << line << "\n" << list;
    std::map<std::string_view, int> seen;
    for (const sim::Input &input : sim::router_inputs())
        EXPECT_EQ(++seen[input.id], 1) << input.id;
}

struct Effect {
    const char *id, *value, *file, *content;
};

/* What the daemon finds. */
TEST(Inputs, ReachTheFilesOfTheDaemon)
{
    Simulator simulator("1");
    const Effect effects[] = {
        {"link.wireless", "blink", "tmp/lcd/network_status/wireless", "wireless blink\n"},
        {"link.clients", "0", "tmp/lcd/network_status/wireless_client", "wireless_client 0\n"},
        {"info.text", "Upgrading Firmware", "tmp/lcd/lcd_info", "Upgrading Firmware\n"},
        {"wan.address", "10.64.64.64", "etc/interfaces", "wan0 10.64.64.64 255.255.255.0 00:1f:33:8a:5f:2a 1500\n"},
        {"computers.count", "0", "tmp/lcd/network_status/speed/pcs", ""},
        {"computers.count", "0", "var/udhcpd.leases", ""},
    };
    for (const Effect &effect : effects) {
        EXPECT_EQ(simulator.set(effect.id, effect.value), 204);
        const auto has_come = [&] { return simulator.file(effect.file) == effect.content; };
        EXPECT_TRUE(eventually(has_come)) << effect.id << ": " << simulator.file(effect.file);
    }
    const auto exists = [&](const char *file) { return std::filesystem::exists(simulator.root() / file); };
    for (const bool on : {true, false}) {
        simulator.set("panel.factory", on ? "on" : "off");
        simulator.set("wan.up", on ? "on" : "off");
        EXPECT_EQ(exists("var/is_default_for_lcd"), on);
        EXPECT_EQ(exists("tmp/wan_uptime"), on);
    }
}

struct SettingEffect {
    const char *id, *value, *key, *stored;
};

TEST(Inputs, ReachTheSettingsStore)
{
    Simulator simulator("pause");
    const std::string store = simulator.root() / "nvram/running";
    const SettingsFile running = {AT_FDCWD, store.c_str()};
    const SettingEffect effects[] = {
        {"wifi.radio", "off", "wifi_dot11_mode", "0"},
        {"wifi.radio", "on", "wifi_dot11_mode", "7"},
        {"wifi.width", "20/40", "wifi_bandwidth", "0"},
        {"wifi.name", "a\\nb\\xff", "wifi_ssid", "a\nb\xff"},
        {"guest.access", "on", "wifi_gacable", "1"},
        {"panel.power-saving", "on", "lcd_power_save_mode", "on"},
        {"panel.language", "de", "language_lcd", "de"},
        {"clock.zone", "GMT+9:2:1", "time_zone", "GMT+9:2:1"},
        {"setting.new_key", "1 = 1", "new_key", "1 = 1"},
    };
    for (const SettingEffect &effect : effects) {
        EXPECT_EQ(simulator.set(effect.id, effect.value), 204) << effect.id;
        const std::unique_ptr<char, decltype(&std::free)> stored(settings_get(running, effect.key), std::free);
        EXPECT_STREQ(stored.get(), effect.stored) << effect.id;
    }
    EXPECT_EQ(simulator.client->Delete("/input/setting.new_key")->status, 204);
    EXPECT_FALSE(simulator.has("new_key"));
    EXPECT_TRUE(simulator.has("\"wifi_ssid\":\"a\\\\nb\\\\xff\"")) << simulator.state();
    EXPECT_EQ(settings_set(running, "wifi_dot11_mode", "4"), 0);
    EXPECT_TRUE(simulator.has("\"wifi.radio\":\"4\"")); // a value that the list does not know is told as it is
}

/* The daemon's own way: what it changes is told without being asked for, and nothing else with it. */
TEST(Inputs, StreamWhatOthersChange)
{
    Simulator simulator("pause");
    const std::string store = simulator.root() / "nvram/running";
    std::string received, news;
    httplib::Client reader("127.0.0.1", simulator.port());
    reader.Get("/stream", [&](const char *data, size_t size) {
        received.append(data, size);
        const size_t first = received.find("event: state");
        if (first == std::string::npos || received.find("event: happenings") == std::string::npos)
            return true;
        if (received.find("\"guest.access\":\"on\"") == std::string::npos) {
            settings_set({AT_FDCWD, store.c_str()}, "wifi_gacable", "1");
            return true;
        }
        news = received.substr(received.rfind("event: state"));
        return false;
    });
    EXPECT_TRUE(received.starts_with("event: frame\ndata: {\"tick\":")) << received;
    EXPECT_TRUE(news.find("\"values\":{\"guest.access\":\"on\"},\"settings\":{") != std::string::npos) << news;
}

/* The splash moves on by a step 61 ticks after it came, however long the machine's clock runs. */
TEST(Inputs, SingleTicksMoveTheDaemonExactly)
{
    Simulator simulator("pause");
    const std::string blank(1024, '\xff');
    const std::string first = simulator.frame_after(blank);
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(simulator.set("clock.step", ""), 204);
    EXPECT_EQ(simulator.ticks(), 60u);
    EXPECT_EQ(simulator.frame(), first);
    EXPECT_EQ(simulator.set("clock.step", ""), 204);
    const std::string second = simulator.frame_after(first);
    EXPECT_EQ(simulator.set("clock.jump", ""), 204);
    EXPECT_EQ(simulator.ticks(), 1261u);
    simulator.frame_after(second);
}
