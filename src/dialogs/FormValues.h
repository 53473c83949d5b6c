// The values of a form's controls by control name: texts, ticks ("0"/"1") and list positions.
// The Qt views and the replay harness read and write the same map.
#pragma once

#include <map>
#include <string>

#include "core/Helpers.h"

namespace fw {

class FormValues {
public:
    std::string& operator[](const std::string& name) { return values_[name]; }
    std::string Text(const std::string& name) const;
    // A tick or a list position (-1: no selection); an empty or unreadable text counts as 0.
    int Int(const std::string& name) const;
    bool Tick(const std::string& name) const { return Int(name) != 0; }
    void SetInt(const std::string& name, int value) { values_[name] = std::to_string(value); }
    void SetTick(const std::string& name, bool on) { values_[name] = on ? "1" : "0"; }
    bool Has(const std::string& name) const { return values_.count(name) != 0; }
    const std::map<std::string, std::string>& All() const { return values_; }

private:
    std::map<std::string, std::string> values_;
};

// A double as a dialog shows it: the locale's form.
std::string ShowNumber(double v, char decimalSeparator);

// Number fields: a comma and a point both become the system's separator.
int DecimalKey(int key, char decimalSeparator);
// Names and identifiers: no ";" or double quote (the file and SCASM can't carry them), a blank
// becomes "_".
int NameKey(int key);
// Free texts that go into the project file: no ";" or double quote.
int TextKey(int key);

// The result of pressing OK: the checks passed and the record took the values.
enum class OkResult { Stored, Refused };

} // namespace fw
