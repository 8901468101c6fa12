#include "flow/simulate/stimulus.h"

#include <algorithm>
#include <array>
#include <deque>
#include <random>

namespace xfc::flow {

namespace {

constexpr std::int32_t reset_cycles = 2;  // in front of the first vector

/// Random numbers that are the same with every library: only the generator itself is used, not the distributions.
class number_source {
public:
    explicit number_source(std::uint64_t seed) : generator_(seed) {}

    std::uint64_t below(std::uint64_t limit) { return generator_() % limit; }
    std::uint64_t bits(int count) { return generator_() >> static_cast<unsigned>(64 - count); }

    std::uint64_t number_in(number_format format) {
        switch (format) {
            case number_format::boolean:
                return below(2);
            case number_format::single_float:
                return floating(23, 8);
            case number_format::double_float:
                return floating(52, 11);
            default:
                return whole();
        }
    }

private:
    std::uint64_t floating(int fraction_bits, int exponent_bits) {
        const std::uint64_t highest = (std::uint64_t{1} << static_cast<unsigned>(exponent_bits)) - 1;
        const std::uint64_t bias = highest / 2;
        const std::uint64_t ones = (std::uint64_t{1} << static_cast<unsigned>(fraction_bits)) - 1;
        std::uint64_t exponent = 0;
        std::uint64_t fraction = bits(fraction_bits);
        switch (below(8)) {
            case 0:  // anywhere, subnormal numbers left out: they are zero
                exponent = 1 + below(highest - 1);
                break;
            case 1: {  // corners
                const std::array<std::array<std::uint64_t, 2>, 8> corners{{{0, 0},
                                                                           {0, 0},
                                                                           {highest, 0},
                                                                           {highest, (ones + 1) / 2},
                                                                           {highest - 1, ones},
                                                                           {1, 0},
                                                                           {bias, 0},
                                                                           {bias, 1}}};
                const auto& corner = corners.at(below(corners.size()));
                exponent = corner[0];
                fraction = corner[1];
                break;
            }
            case 2:  // few bits, so that sums cancel
                fraction &= ~(ones >> 3U);
                exponent = bias + below(4);
                break;
            default:  // near one
                exponent = bias - 8 + below(17);
                break;
        }
        const std::uint64_t sign = below(2);
        return (((sign << static_cast<unsigned>(exponent_bits)) | exponent) << static_cast<unsigned>(fraction_bits)) |
               fraction;
    }

    std::uint64_t whole() {
        constexpr std::array<std::uint32_t, 6> corners{0, 1, 0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 0x80000001};
        switch (below(4)) {
            case 0:
                return corners.at(below(corners.size()));
            case 1:
                return static_cast<std::uint32_t>(static_cast<std::int32_t>(below(2001)) - 1000);
            default:
                return bits(32);
        }
    }

    std::mt19937_64 generator_;
};

void append_bits(std::string& text, std::uint64_t bits, int width) {
    for (int place = width - 1; place >= 0; --place) {
        text += ((bits >> static_cast<unsigned>(place)) & 1U) != 0 ? '1' : '0';
    }
}

}  // namespace

stimulus make_stimulus(const graph& source, std::size_t vectors, std::uint64_t seed, std::int32_t latency) {
    number_source numbers(seed);
    std::vector<std::vector<std::uint64_t>> drawn;
    for (std::size_t number = 0; number < vectors; ++number) {
        std::vector<std::uint64_t> vector;
        for (const port& input : source.inputs()) {
            vector.push_back(numbers.number_in(input.format));
        }
        drawn.push_back(std::move(vector));
    }
    return make_stimulus(std::move(drawn), seed, latency);
}

stimulus make_stimulus(std::vector<std::vector<std::uint64_t>> vectors, std::uint64_t seed, std::int32_t latency) {
    number_source numbers(seed);
    const std::size_t count = vectors.size();
    stimulus made{.vectors = std::move(vectors)};
    const auto settle = [&](stimulus_cycle cycle, std::int32_t cycles) {
        made.cycles.insert(made.cycles.end(), static_cast<std::size_t>(cycles), cycle);
    };
    settle({.reset = true}, reset_cycles);
    for (std::size_t number = 0; number < count; ++number) {
        made.cycles.push_back({.enable = true, .startin = true, .vector = number});
    }
    settle({.enable = true}, latency + 1);
    settle({.enable = true, .startin = true}, latency / 2);
    settle({.reset = true}, 1);  // forgets what was on its way
    for (std::size_t number = 0; number < count;) {
        const bool enable = numbers.below(4) != 0;
        const bool startin = numbers.below(4) != 0;
        made.cycles.push_back({.enable = enable, .startin = startin, .vector = number});
        number += enable && startin ? 1 : 0;
    }
    settle({.enable = true}, latency + 1);
    return made;
}

std::string stimulus_text(const stimulus& what, const graph& source) {
    std::string text;
    for (const stimulus_cycle& cycle : what.cycles) {
        text += cycle.reset ? '1' : '0';
        text += cycle.enable ? '1' : '0';
        text += cycle.startin ? '1' : '0';
        for (std::size_t place = 0; place < source.inputs().size(); ++place) {
            append_bits(text, what.vectors[cycle.vector][place], format_bits(source.inputs()[place].format));
        }
        text += source.inputs().empty() ? "0\n" : "\n";
    }
    return text;
}

std::string difference_of(const stimulus& what, const std::vector<std::vector<std::uint64_t>>& expected,
                          const graph& source, std::int32_t latency, const std::string& seen) {
    std::vector<std::string> wanted;
    for (const std::vector<std::uint64_t>& outputs : expected) {
        wanted.emplace_back();
        for (std::size_t place = 0; place < source.outputs().size(); ++place) {
            append_bits(wanted.back(), outputs[place], format_bits(source.outputs()[place].format));
        }
    }
    const auto stages = static_cast<std::size_t>(latency);
    std::deque<bool> starts(stages, false);  // on their way, the newest first
    std::deque<std::size_t> vectors;         // applied in cycles of enable, the newest first
    std::size_t at = 0;
    for (std::size_t number = 0; number < what.cycles.size(); ++number) {
        const stimulus_cycle& cycle = what.cycles[number];
        const std::size_t end = seen.find('\n', at);
        if (end == std::string::npos) {
            return "the simulation ended in cycle " + std::to_string(number) + " of " +
                   std::to_string(what.cycles.size());
        }
        const std::string_view line = std::string_view(seen).substr(at, end - at);
        at = end + 1;
        if (cycle.reset) {
            starts.assign(stages, false);
        }
        if (line.empty() || line[0] != (starts.back() ? '1' : '0')) {
            return "startout is " + std::string(line.substr(0, 1)) + " in cycle " + std::to_string(number);
        }
        if (vectors.size() >= stages && line.substr(1) != wanted[vectors[stages - 1]]) {
            return "cycle " + std::to_string(number) + ": outputs " + std::string(line.substr(1)) + ", the model has " +
                   wanted[vectors[stages - 1]];
        }
        if (cycle.enable) {
            // With reset and enable data moves on all the same; the benches never have both.
            vectors.push_front(cycle.vector);
            starts.push_front(cycle.startin);
            starts.pop_back();
            if (vectors.size() > stages) {
                vectors.pop_back();
            }
        }
    }
    return {};
}

std::vector<std::vector<std::optional<std::uint64_t>>> outputs_seen(const stimulus& what, const graph& source,
                                                                    std::int32_t latency, const std::string& seen) {
    std::vector<std::vector<std::optional<std::uint64_t>>> outputs;
    std::size_t at = 0;
    const std::size_t first = static_cast<std::size_t>(reset_cycles) + static_cast<std::size_t>(latency);
    for (std::size_t cycle = 0; outputs.size() < what.vectors.size(); ++cycle) {
        const std::size_t end = at < seen.size() ? seen.find('\n', at) : std::string::npos;
        const std::string_view line =
            end == std::string::npos ? std::string_view() : std::string_view(seen).substr(at, end - at);
        if (cycle >= first) {
            std::size_t bit = 1;
            outputs.emplace_back();
            for (const port& output : source.outputs()) {
                const std::string_view bits =
                    line.substr(std::min(bit, line.size()), static_cast<std::size_t>(format_bits(output.format)));
                bit += bits.size();
                std::uint64_t number = 0;
                bool known = bits.size() == static_cast<std::size_t>(format_bits(output.format));
                for (const char letter : bits) {
                    known = known && (letter == '0' || letter == '1');
                    number = number * 2 + (letter == '1' ? 1 : 0);
                }
                outputs.back().push_back(known ? std::optional(number) : std::nullopt);
            }
        }
        at = end == std::string::npos ? seen.size() : end + 1;
    }
    return outputs;
}

}  // namespace xfc::flow
