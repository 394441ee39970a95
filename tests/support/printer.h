// A printer of a test: its jobs draw on a recorded page, and may fail where they are told to.
#pragma once

#include "support/recordingcanvas.h"
#include "toolkit/desk.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vael::test {

/// What a printer did, and where it fails.
struct PrinterLog {
    std::vector<PrintOrder> Orders;
    std::vector<std::vector<Drawn>> Pages;  // that came out, those of a job that failed too
    std::vector<Extent> Sizes;              // of the pages
    int Ended = 0;                          // jobs that ended well
    int FailOn = 0;                         // the page of a job, from 1, that does not come
    bool FailAtEnd = false;

    [[nodiscard]] std::vector<std::string> WordsOf(std::size_t page) const {
        std::vector<std::string> words;
        for (const Drawn& drawn : Pages.at(page))
            if (drawn.What == Drawn::Kind::Text) words.push_back(drawn.Words);
        return words;
    }
    /// Whether a text stands on any page.
    [[nodiscard]] bool Has(const std::string& text) const {
        for (std::size_t page = 0; page < Pages.size(); ++page)
            if (Has(page, text)) return true;
        return false;
    }
    [[nodiscard]] bool Has(std::size_t page, const std::string& text) const {
        const auto words = WordsOf(page);
        return std::find(words.begin(), words.end(), text) != words.end();
    }
};

class RecordedJob : public PrintJob {
public:
    RecordedJob(PrinterLog& log, const PrintOrder& order)
        : log_(log), page_(order.Landscape ? 842.0 : 595.0, order.Landscape ? 595.0 : 842.0) {
        log_.Orders.push_back(order);
    }
    Surface& Page() override { return page_; }
    bool NextPage() override {
        Out();
        return ++number_ != log_.FailOn;
    }
    bool End() override {
        Out();
        if (log_.FailAtEnd) return false;
        ++log_.Ended;
        return true;
    }

private:
    void Out() {
        log_.Pages.push_back(std::exchange(page_.Strokes, {}));
        log_.Sizes.push_back(page_.Size());
    }
    PrinterLog& log_;
    RecordingSurface page_;
    int number_ = 1;
};

/// The `Printer` of a desk whose jobs are written down in `log`.
inline auto PrinterInto(PrinterLog& log) {
    return [&log](const PrintOrder& order) -> std::unique_ptr<PrintJob> {
        return std::make_unique<RecordedJob>(log, order);
    };
}

}  // namespace vael::test
