// What a user notices of the window's speed: how long a status takes from the wire to the screen,
// how many the window shows a second, and how long many routes hold it.
#include <QScrollBar>
#include <limits>

#include "benchmarks/bench_table.h"
#include "benchmarks/bench_window.h"
#include "core/clmsg_reply_json.h"

namespace {

using namespace zorvanelink;
using namespace zorvanelink::ui;
using bench::BenchTable;
using bench::BenchWindow;
using bench::HeldApplication;
using bench::Milliseconds;
using bench::PaintWatch;
using common::MsgCode;
using core::sslvpn::CLMsgReplyJson;
using Clock = std::chrono::steady_clock;

constexpr double kFrame = 1000.0 / 60;   // ms of a screen's frame
constexpr double kNoticedHold = 100;     // ms
constexpr int kStatuses = 2000;          // each waited for
constexpr int kFullQueue = 101;          // texts that the link keeps at most
constexpr int kQueues = 50;              // full ones, for the rate
constexpr std::size_t kLinkRead = 4028;  // bytes that the link reads at once
constexpr int kRoutes = 20000;           // half of them sort backwards
constexpr int kPages = 200;              // places at which the scroll bar stops
constexpr auto kTwoStates = {MsgCode::RECONNECTING, MsgCode::ONLINE};

void fromWireToCard(BenchWindow& window, BenchTable& table) {
    auto& label = window.Find<QLabel>("state_label_");
    PaintWatch const painting(&label);
    std::vector<double> times;
    while (times.size() < kStatuses) {
        for (MsgCode const code : kTwoStates) {
            std::string const json = BenchWindow::Status(code);
            QString const before = label.text();
            QCoreApplication::processEvents();
            int painted = painting.Count();
            auto const start = Clock::now();
            window.Say(json);
            BenchWindow::Until(
                [&] {
                    // What was painted with the old text does not count.
                    if (label.text() == before) {
                        painted = painting.Count();
                    }
                    return painting.Count() > painted;
                },
                "a repainted card");
            times.push_back(Milliseconds(Clock::now() - start).count());
        }
    }
    std::sort(times.begin(), times.end());
    table.AddAtMost("status, wire to painted card, median", times[times.size() / 2], "ms", kFrame);
    table.AddAtMost("status, wire to painted card, 99 of 100", times[times.size() * 99 / 100], "ms",
                    2 * kFrame);
}

// Four frames fill what the link reads at once, so that none of a burst is cut in two.
std::string padded(std::string const& json) {
    constexpr std::size_t kSize = kLinkRead / 4 - components::ipc::kIPCMsgHeaderLen;
    return json + std::string(kSize - json.size(), ' ');
}

// By the full queue: more than that the link drops. Its last text is a record of counters.
void statusesThroughTheWindow(BenchWindow& window, BenchTable& table) {
    core::sslvpn::CLMsgReplyTunnelStatisticsData last;
    last.profileName = BenchWindow::ProfileName();
    auto const& seen = window.Window().CurrentSession().context.statistics.inbound_packets;
    double const seconds = bench::SecondsOf([&] {
        for (int queue = 1; queue <= kQueues; ++queue) {
            for (int i = 0; i < kFullQueue / 2; ++i) {
                for (MsgCode const code : kTwoStates) {
                    window.Say(padded(BenchWindow::Status(code)));
                }
            }
            last.inbound_packets = static_cast<std::uint64_t>(queue);
            window.Say(padded(CLMsgReplyJson::Build(last)));
            BenchWindow::Until([&] { return seen == last.inbound_packets; }, "the last of a queue");
        }
    });
    // A full queue may not hold the window noticeably.
    table.AddAtLeast("statuses shown by the window", kQueues * (kFullQueue - 1) / seconds, "/s",
                     kFullQueue * 1000 / kNoticedHold, 1.0);
}

std::string manyRoutes() {
    core::sslvpn::CLMsgReplyNetConfigData data;
    data.profileName = BenchWindow::ProfileName();
    data.clientPrivateIP = "10.8.0.7";
    data.vnicGatewayIP = "10.8.0.1";
    for (int i = 0; i < kRoutes; ++i) {
        int const n = i % 2 == 0 ? i : kRoutes - i;
        data.routeList.push_back({fmt::format("10.{}.{}.0", n >> 8, n & 255), 24, n % 7});
    }
    return CLMsgReplyJson::Build(data);
}

std::string oneRoute() {
    core::sslvpn::DomainRouteAddRouteData route;
    route.profileName = BenchWindow::ProfileName();
    route.destination = "10.20.30.40";
    route.perfix = 32;
    return CLMsgReplyJson::Build(route);
}

class RouteSteps {
  public:
    RouteSteps(HeldApplication& application, BenchWindow& window, BenchTable& table)
        : application_(application),
          table_(table),
          view_(window.Find<QTableView>("route_table_ipv4_")),
          painting_(view_.viewport()) {}

    // Runs the act as an event until the condition holds and the table has been painted; a row with
    // the longest that the window was held meanwhile.
    void Step(std::string const& name, std::function<void()> const& act,
              std::function<bool()> const& done = nullptr) {
        QCoreApplication::processEvents();
        application_.TakeLongestHold();
        run(act, done);
        table_.AddAtMost(title(name), application_.TakeLongestHold().count(), "ms", kNoticedHold);
    }
    void Scroll() {
        auto* const bar = view_.verticalScrollBar();
        application_.TakeLongestHold();
        for (int page = 1; page <= kPages; ++page) {
            run([&] { bar->setValue(bar->maximum() * page / kPages); }, nullptr);
        }
        table_.AddAtMost(title("scrolled, slowest step"), application_.TakeLongestHold().count(),
                         "ms", kFrame);
    }
    int Rows() const { return view_.model()->rowCount(); }

  private:
    static std::string title(std::string const& step) {
        return fmt::format("{} routes, {}", kRoutes, step);
    }
    void run(std::function<void()> const& act, std::function<bool()> const& done) {
        int painted = std::numeric_limits<int>::max();
        auto const acting = [&] {
            act();
            painted = painting_.Count();
        };
        QMetaObject::invokeMethod(&view_, acting, Qt::QueuedConnection);
        BenchWindow::Until([&] { return painting_.Count() > painted && (!done || done()); },
                           "painted routes");
    }

  private:
    HeldApplication& application_;
    BenchTable& table_;
    QTableView& view_;
    PaintWatch painting_;
};

void routes(HeldApplication& application, BenchWindow& window, BenchTable& table) {
    window.Find<QAbstractButton>("tab_route_").click();
    std::string const json = manyRoutes();
    auto& head = *window.Find<QTableView>("route_table_ipv4_").horizontalHeader();
    auto& search = window.Find<QLineEdit>("route_search_");
    RouteSteps steps(application, window, table);
    auto const click = [&] { Q_EMIT head.sectionClicked(0); };
    auto const all = [&] { return steps.Rows() >= kRoutes; };
    auto const more = [&] { return steps.Rows() > kRoutes; };
    auto const some = [&] { return steps.Rows() < kRoutes; };

    steps.Step(
        "from the wire", [&] { window.Say(json); }, all);
    steps.Step("sorted", click);
    steps.Scroll();
    steps.Step(
        "one more", [&] { window.Say(oneRoute()); }, more);
    steps.Step(
        "searched", [&] { search.setText(QStringLiteral("10.7")); }, some);
    steps.Step(
        "search emptied", [&] { search.clear(); }, all);
    steps.Step("unsorted", click);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Such a platform warns of what it cannot do.
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    HeldApplication application(argc, argv);
    BenchTable table("The window");
    {
        BenchWindow window;
        fromWireToCard(window, table);
        statusesThroughTheWindow(window, table);
        routes(application, window, table);
    }
    return table.Print();
}
