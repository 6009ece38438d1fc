// A place where the library can write while the tour shows how, and of which nothing is left.
#ifndef KVUTILS_EXAMPLES_TOUR_WORKSHOP_H_
#define KVUTILS_EXAMPLES_TOUR_WORKSHOP_H_

#include <string>

namespace tour {

// A new, empty folder below the system's one for temporary files. While it lives it is the
// library's writable folder: data names lead to it first, what the library writes lands in it, and
// the user's own folder stays as it is.
class Workshop {
 public:
  // Throws Failure when there cannot be such a folder, or its path is too long for the library.
  Workshop();
  ~Workshop();  // as Remove, whose result is lost
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;

  // Gives the library its writable folder back, and removes this one with all that is in it. False
  // when something of it stays; the folder is tried again at the end.
  bool Remove();

  const std::string& Folder() const { return folder_; }  // UTF-8, ends in "\"

  // Copies the file that the data name leads to, to `place` below the folder ("download\a.txt"),
  // and gives its whole path. Throws Failure.
  std::string Bring(const char* dataName, const std::string& place) const;

 private:
  std::string folder_;
  std::string writableFolder_;  // the library's, before
};

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_WORKSHOP_H_
