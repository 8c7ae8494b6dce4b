#ifndef QUARVO_UNIT_NORMAL_FORM_H
#define QUARVO_UNIT_NORMAL_FORM_H

#include <string>

// Sets `normal_form` to the alphabetically smallest rotation of the unit and of its reverse complement, the form in
// which the program reports units by default.
void set_to_normal_form(std::string& normal_form, const std::string& unit);

#endif
