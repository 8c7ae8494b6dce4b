#pragma once

#include <string>

// A file that nobody else can find or touch until it gets its name.
//
// Where the file system has files without a name it is one, and vanishes with the process, however that ends. Elsewhere
// it has a name that cannot be guessed, was made by this process for certain (no link is followed, no file opened that
// was there), and is removed by the destructor, by any signal that ends the process and can be caught, and when memory
// runs out. One of these at a time may be in want of a name. Not copyable. Calls that fail leave the reason in errno.
class CTemporaryFile {
 public:
  CTemporaryFile() = default;
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  ~CTemporaryFile() { discard(); }

  // Makes the file, empty, to be read and written. It can get names in this directory.
  bool create(const std::string& directory);

  // Open from create() on. Returns -1 before.
  int descriptor() const { return its_descriptor; }

  // Lets nobody do with it who may not with that file: owner, group and mode become the same, as far as this process
  // may set them. A file that does not exist changes nothing.
  void take_mode_of(const std::string& file_name) const;

  // Gives it this name, in the place of whatever file had it, in one step: nobody sees a part of it or no file.
  // Where a file must not be replaced, one of this name makes the call fail.
  bool give_name(const std::string& name, bool may_replace = true);

  // Takes away the name that cannot be guessed: the file then lasts as long as it is open.
  void forget_name();

  // Closes the file; it vanishes unless it got its name.
  void discard();

  // For tests: files have names from now on, as where the file system has no others.
  static void use_names_alone(bool does_so);

 private:
  std::string directory_name;
  std::string own_name;  // that cannot be guessed; empty when there is none
  int its_descriptor = -1;

  bool create_without_name();
  bool create_with_name();
  bool link_to_own_name();
};

// Removes the file that is still in want of its name. For a process that ends at once; safe in a signal handler.
void remove_unnamed_file();
