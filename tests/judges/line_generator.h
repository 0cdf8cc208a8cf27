/// Random lines of elevation files.
#pragma once

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace veldtrim::test {

/// Lines near the grammar of a record. One draw a statement: the lines are the same with every
/// compiler.
class LineGenerator {
public:
    explicit LineGenerator(unsigned seed) : random_(seed) {}

    /// Two numbers of any size and length, most of them good ones.
    std::string numbers() {
        const std::string first = number();
        return first + ';' + number() + ";0";
    }

    /// A record as programs write them, with so many decimals.
    std::string usual(char separator, unsigned decimals) {
        std::string line;
        for (int field = 0; field < 3; ++field) {
            line += draw(4) == 0 ? "-" : "";
            line += digits(1 + draw(8));
            line += decimals == 0 ? "" : '.' + digits(decimals);
            line += field < 2 ? std::string(1, separator) : "";
        }
        return line;
    }

    /// Plausible numbers, broken ones, and everything between, in odd distances.
    std::string oddities(char separator) {
        std::string line = anyNumber();
        for (unsigned more = draw(8) == 0 ? 1 : 2; more > 0; --more) {
            line += gap(separator);
            line += anyNumber();
        }
        if (draw(16) == 0 && !line.empty()) {
            char& any = line[draw(static_cast<unsigned>(line.size()))];
            any = std::string("\0\x1A \t;,.eE+-0x9\xFF", 15)[draw(15)];
        }
        return line;
    }

    /// A number less than `below`.
    unsigned draw(unsigned below) { return static_cast<unsigned>(random_() % below); }

private:
    std::string digits(unsigned count) {
        std::string text(count, '0');
        std::generate(text.begin(), text.end(), [&] { return "0123456789"[draw(10)]; });
        return text;
    }

    std::string number() {
        std::string text = draw(3) == 0 ? "-" : "";
        const unsigned kind = draw(8);
        text += digits(draw(kind < 4 ? 7 : 25));
        if (kind != 7) {
            text += '.' + digits(draw(kind < 4 ? 4 : 25));
        }
        if (kind == 4 || kind == 5) {
            text += draw(2) == 0 ? "e-" : "e+";
            text += digits(1 + draw(3));
        }
        return draw(16) == 0 ? text + "abE+-.x ,"[draw(9)] : text;
    }

    std::string anyNumber() {
        static std::istringstream words(
            "1e 1e+ 0x10 inf nan 1e999 -1e999 .5 5. +3 . - +-1 --1 1e5x 1.2. 1e5.5 1e-999 -0 -.0 "
            "0e0 1E5 4.9e-324 2e-324 1.7976931348623159e308 1'0 1,5 +1e+2 e5 9007199254740993");
        static const std::vector<std::string> odd(std::istream_iterator<std::string>(words), {});
        return draw(8) == 0 ? odd[draw(static_cast<unsigned>(odd.size()))] : number();
    }

    std::string gap(char separator) {
        static const std::vector<std::string> blanks{"", "", "", " ", "\t", "  ", "\v\f", "\r"};
        std::string text = blanks[draw(8)];
        if (draw(64) == 0) {
            text.append(90 + draw(20), 'k');
        }
        if (draw(64) != 0) {
            text += separator;
        }
        return text + blanks[draw(8)];
    }

    std::mt19937 random_;
};

} // namespace veldtrim::test
