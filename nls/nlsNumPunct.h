// Number punctuation installed with every locale the catalog library sets: the locale's decimal point,
// but never a thousands separator or digit grouping.
#pragma once

#include <locale>
#include <string>

class nlsNumPunct : public std::numpunct<char>
{
public:
    // The decimal point and the names of true and false come from the named locale when the standard
    // library knows it, else from the C library's current locale.
    nlsNumPunct(const char* localeName, size_t refs = 0);
    ~nlsNumPunct() override = default;

protected:
    char do_decimal_point() const override
    {
        return decimalPoint_;
    }
    char do_thousands_sep() const override
    {
        return '\0';
    }
    std::string do_grouping() const override
    {
        return grouping_;
    }
    std::string do_truename() const override
    {
        return trueName_;
    }
    std::string do_falsename() const override
    {
        return falseName_;
    }

private:
    char decimalPoint_ = '.';
    std::string grouping_;
    std::string trueName_ = "true";
    std::string falseName_ = "false";
};
