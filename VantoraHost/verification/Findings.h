#pragma once

#include "VantoraHost/verification/Verification.h"

#include <string>

namespace vantora::verification {

/// Takes findings into a verdict, up to the most that are listed.
class Findings {
public:
    explicit Findings(Verdict& verdict) : verdict_(verdict) {}

    void add(Kind kind, int page, std::string object, std::string what)
    {
        if (verdict_.findings.size() >= mostFindings) {
            ++verdict_.more;
            return;
        }
        verdict_.findings.push_back({kind, page, std::move(object), std::move(what)});
    }
    void notTold(std::string sentence) { verdict_.notTold.push_back(std::move(sentence)); }
    Verdict& verdict() { return verdict_; }

private:
    Verdict& verdict_;
};

/// The beginning of a text in quotes, for people.
std::string quoted(const std::string& utf8);

} // namespace vantora::verification
