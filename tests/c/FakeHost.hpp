// A host application of the C interface: a service that has documents, files in memory, and a log.
//
//   FakeHost host;
//   host.documents["venue/1/full"] = "{...}";
//   tern_set_host(&host.callbacks(), nullptr);
//
// Tokens are always given. Ownership: it is released by `tern_set_host(NULL)`, for which its
// destructor waits. Threads: any.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "TernCoreKit/c/tern.h"

namespace tern::test {

class FakeHost {
 public:
  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  tern_host& callbacks() { return callbacks_; }
  // Makes it the host of the process.
  void settle();

  std::vector<std::string> requests() const;
  std::vector<tern_http_exchange*> waiting() const;
  std::vector<tern_http_exchange*> cancelled() const;
  std::vector<std::string> lines() const;
  std::map<std::string, std::string> files() const;
  void store(const std::string& path, std::string contents);
  int releases() const;

  // By their paths below the customer's, without the query; set before requests come.
  std::map<std::string, std::string> documents;
  // Requests of documents are kept until the test ends them.
  bool keepsWaiting = false;
  bool refusesFiles = false;

 private:
  static FakeHost& of(void* context) { return *static_cast<FakeHost*>(context); }
  void answer(const tern_http_request& request, tern_http_exchange* exchange);

  tern_host callbacks_{};
  mutable std::mutex mutex_;
  // Guarded by mutex_.
  std::vector<std::string> requests_;
  std::vector<tern_http_exchange*> waiting_;
  std::vector<tern_http_exchange*> cancelled_;
  std::vector<std::string> lines_;
  std::map<std::string, std::string> files_;
  int releases_ = 0;
  bool isSettled_ = false;
};

// The two floors of VenueFolders.hpp, as what a service has.
std::map<std::string, std::string> twoFloorsDocuments();

// Options of a hub that asks it.
inline const char* const fakeHubOptions =
    R"({"host":"https://h","customerId":1,"clientId":"c","clientSecret":"s"})";

// Ends an exchange with a body, from outside of the host.
bool completeWith(tern_http_exchange* exchange, int status, const std::string& body);

}  // namespace tern::test
