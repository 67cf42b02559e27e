#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <vector>

#include "dsp/RelaxedAtomic.h"

namespace vorix {

// One section of an External filter.
struct FilterSection {
    // The recursion reads [1] and [2], the last two samples; [0] repeats the last one processed.
    RelaxedAtomic<float> x[3];
    RelaxedAtomic<double> y[3];
    RelaxedAtomic<float> b[3] = {1.0f, 0.0f, 0.0f};
    RelaxedAtomic<float> a[3] = {1.0f, 0.0f, 0.0f};  // a[0] is not normalised on load
};

// The sections of an External filter. The array never changes size where the audio thread can
// see it: a new array is published with one release store, and the old one is handed back to the
// caller, who keeps it until the audio thread has moved past every block that may still read it.
class FilterSectionList {
public:
    using Sections = std::vector<FilterSection>;

    FilterSectionList() = default;
    FilterSectionList(const FilterSectionList&) = delete;
    FilterSectionList& operator=(const FilterSectionList&) = delete;

    // The sections as one snapshot. Any thread: the audio thread reads them through this alone.
    std::span<FilterSection> View() const noexcept {
        Sections* sections = published_.load(std::memory_order_acquire);
        return sections != nullptr ? std::span<FilterSection>(*sections) : std::span<FilterSection>();
    }

    // Main thread: no replacement can happen between the two ends of a loop there.
    FilterSection* begin() const noexcept { return View().data(); }
    FilterSection* end() const noexcept {
        const std::span<FilterSection> sections = View();
        return sections.data() + sections.size();
    }
    std::size_t size() const noexcept { return View().size(); }
    bool empty() const noexcept { return View().empty(); }
    FilterSection& operator[](std::size_t i) const noexcept { return View()[i]; }

    // Puts `sections` in place and returns the array the audio thread may still be reading.
    // Main thread.
    [[nodiscard]] std::unique_ptr<Sections> Replace(std::unique_ptr<Sections> sections) noexcept {
        published_.store(sections.get(), std::memory_order_release);
        std::swap(owned_, sections);
        return sections;
    }

private:
    std::unique_ptr<Sections> owned_;
    std::atomic<Sections*> published_{nullptr};
};

}  // namespace vorix
