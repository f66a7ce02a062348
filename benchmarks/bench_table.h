// The table that a benchmark prints at its end: one row a figure, beside the limit or baseline that
// it is held against.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace zorvanelink::bench {

class BenchTable {
  public:
    explicit BenchTable(std::string title) : title_(std::move(title)) {}

    // A plain figure without a limit.
    void Add(std::string const& name, double figure, std::string const& unit) {
        rows_.push_back({name, number(figure), unit, "", "", ""});
    }
    // Good when figure / baseline is at least `least_ratio`.
    void AddAtLeast(std::string const& name, double figure, std::string const& unit,
                    double baseline, double least_ratio) {
        addJudged(name, figure, unit, baseline, figure >= baseline * least_ratio);
    }
    // Good when the figure is not above the limit.
    void AddAtMost(std::string const& name, double figure, std::string const& unit, double limit) {
        addJudged(name, figure, unit, limit, figure <= limit);
    }

    // The exit code of the program: 0 when every row is good.
    int Print() const {
        std::size_t width = 4;
        for (auto const& row : rows_) {
            width = std::max(width, row.name.size());
        }
        fmt::print("\n{}\n", title_);
        printRow({"name", "figure", "unit", "limit", "ratio", "verdict"}, width);
        for (auto const& row : rows_) {
            printRow(row, width);
        }
        return all_good_ ? 0 : 1;
    }

  private:
    struct Row {
        std::string name, figure, unit, limit, ratio, verdict;
    };

    static std::string number(double value) {
        return value < 100 ? fmt::format("{:.2f}", value) : fmt::format("{:.0f}", value);
    }
    void addJudged(std::string const& name, double figure, std::string const& unit, double limit,
                   bool good) {
        rows_.push_back({name, number(figure), unit, number(limit),
                         fmt::format("{:.2f}", limit != 0 ? figure / limit : 0),
                         good ? "ok" : "MISSED"});
        all_good_ = all_good_ && good;
    }
    static void printRow(Row const& row, std::size_t width) {
        fmt::print("  {:<{}}  {:>12}  {:<8}  {:>12}  {:>6}  {}\n", row.name, width, row.figure,
                   row.unit, row.limit, row.ratio, row.verdict);
    }

    std::string title_;
    std::vector<Row> rows_;
    bool all_good_ = true;
};

// Seconds that the call takes.
template <class Call>
double SecondsOf(Call&& call) {
    auto const start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace zorvanelink::bench
