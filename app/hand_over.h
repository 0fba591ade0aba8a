#pragma once

#include <filesystem>
#include <optional>

// How a start that finds the tool running already hands it the file to open: by a request, a small
// file that names the one to open, in a folder of this user's that the running tool looks into. The
// folder is open to its user alone.

namespace warpline {

// The folder of the requests. application_data is the user's application-data folder.
std::filesystem::path RequestFolder(const std::filesystem::path& application_data);

// One request, by the start that makes it. It is withdrawn when this object goes.
class HandOver {
 public:
  enum class Answer {
    kWaiting,  // the running tool has not looked yet
    kTaken,    // it opens the file
    kRefused,  // it cannot now, or the request could not be made
  };

  // Makes the request for a file, an absolute path, and the folder when it is missing.
  HandOver(const std::filesystem::path& folder, const std::filesystem::path& file);
  ~HandOver();
  HandOver(const HandOver&) = delete;
  HandOver& operator=(const HandOver&) = delete;

  Answer Look() const;

  // Takes the request back: kTaken when the running tool was quicker.
  Answer Withdraw();

 private:
  std::filesystem::path request_;
  bool made_;
};

// What the running tool does with the next request: takes it and returns the file to open, or
// refuses it. Nothing when there is none.
enum class Requests { kTake, kRefuse };
std::optional<std::filesystem::path> NextRequest(const std::filesystem::path& folder,
                                                 Requests what);

}  // namespace warpline
