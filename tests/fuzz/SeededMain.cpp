// The main of a target where there is no libFuzzer: PROGRAM COUNT runs the target's seeds and COUNT inputs
// derived from them, always the same ones; PROGRAM FILE... runs the inputs in the files again.

#include <algorithm>
#include <charconv>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>

#include "tests/fuzz/FuzzTarget.h"

namespace {

using fuzz::Bytes;

// std::mt19937 gives the same numbers everywhere; the library's distributions do not.
class Mutator {
 public:
    explicit Mutator(const std::vector<Bytes>& seeds) : seeds_(seeds) {}

    Bytes Next() {
        Bytes input = seeds_[Below(seeds_.size())];
        for (std::size_t left = 1 + Below(8); left > 0; --left) Change(input);
        return input;
    }

 private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }
    std::uint8_t AnyByte() { return static_cast<std::uint8_t>(random_()); }

    void Change(Bytes& input) {
        const auto at = [&] { return static_cast<std::ptrdiff_t>(Below(input.size() + 1)); };
        const std::ptrdiff_t first = at();
        const std::ptrdiff_t second = at();
        const auto [begin, end] = std::minmax(first, second);
        switch (Below(6)) {
            case 0:
                if (!input.empty()) input[Below(input.size())] = AnyByte();
                break;
            case 1:
                if (!input.empty()) input[Below(input.size())] ^= static_cast<std::uint8_t>(1U << Below(8));
                break;
            case 2:
                for (std::size_t left = 1 + Below(16); left > 0; --left)
                    input.insert(input.begin() + begin, AnyByte());
                break;
            case 3:
                input.erase(input.begin() + begin, input.begin() + end);
                break;
            case 4: {
                const Bytes part(input.begin() + begin, input.begin() + end);
                input.insert(input.begin() + at(), part.begin(), part.end());
                break;
            }
            default: {
                const Bytes& other = seeds_[Below(seeds_.size())];
                input.erase(input.begin() + begin, input.end());
                input.insert(input.end(),
                             other.begin() + static_cast<std::ptrdiff_t>(Below(other.size() + 1)),
                             other.end());
                break;
            }
        }
    }

    const std::vector<Bytes>& seeds_;
    std::mt19937 random_{19970611};
};

bool Runs(const Bytes& input, const std::string& name) {
    try {
        fuzz::RunInput(input);
        return true;
    } catch (const std::exception& error) {
        std::cerr << name << ": " << error.what() << "\n";
        return false;
    }
}

bool RunSeeded(std::size_t count) {
    const std::vector<Bytes> seeds = fuzz::Seeds();
    Mutator mutator(seeds);
    for (std::size_t i = 0; i < seeds.size() + count; ++i) {
        const Bytes input = i < seeds.size() ? seeds[i] : mutator.Next();
        if (Runs(input, "input " + std::to_string(i))) continue;
        std::ofstream file("failing-input", std::ios::binary);
        std::copy(input.begin(), input.end(), std::ostreambuf_iterator<char>(file));
        std::cerr << "The input is in the file failing-input of the working folder.\n";
        return false;
    }
    std::cout << seeds.size() << " seeds and " << count << " inputs made from them, nothing found\n";
    return true;
}

bool RunFiles(const std::vector<std::string>& names) {
    return std::all_of(names.begin(), names.end(), [](const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        if (!file) {
            std::cerr << name << ": this file cannot be opened\n";
            return false;
        }
        return Runs(Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()), name);
    });
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        std::cerr << "usage: PROGRAM COUNT | PROGRAM FILE...\n";
        return 2;
    }
    const std::string& first = arguments.front();
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(first.data(), first.data() + first.size(), count);
    const bool isCount = arguments.size() == 1 && error == std::errc() && end == first.data() + first.size();
    return (isCount ? RunSeeded(count) : RunFiles(arguments)) ? 0 : 1;
}
