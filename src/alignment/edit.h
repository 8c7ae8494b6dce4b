#pragma once

// The edits of an alignment, in the order of preference among equals.
enum class edit : unsigned char { mismatch, insertion, deletion, none };
