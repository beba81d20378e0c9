#pragma once

#include "VantoraHost/cli/arguments/WorkerOptions.h"
#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora::cli {

/// What the command line says about documents that are looked at.
struct LookOptions {
    InputNames inputs;
    std::string passwordFile; ///< empty: none
    WorkerChoice workers;
};

/// Documents that a command looks at in confined processes, small ones several in one after the
/// other, as in a run; without worker processes, all in this one.
class Looking {
public:
    /// Finds the documents, and reads what that takes. The options and streams must outlive the
    /// result.
    static Result<Looking> prepare(const LookOptions& options, const Installation& installation,
                                   const Streams& streams);

    /// Looks at one document that can be read: the JSON text about it that goes on to `Take`.
    using Look = std::function<std::string(const std::string& input)>;
    /// Takes what was found in a document, or why its process had nothing to say.
    using Take = std::function<void(const std::string& input, Result<std::string> found)>;

    /// Looks at each document, and hands over what was found in the order of the inputs. Returns
    /// false when the person doesn't want to wait any longer.
    bool atEach(const Look& look, const Take& take) const;

    /// A document that several processes share; parts count from 0.
    struct Sharing {
        std::function<std::string(const std::string& input, std::size_t part)> look;

        /// How many parts follow the first one, in which this was found, for so many processes;
        /// where there are never any, nothing.
        std::function<std::size_t(const std::string& input, const std::string& first,
                                  std::size_t processes)>
            furtherParts;
        std::function<void(const std::string& input, Result<std::vector<std::string>> found)> take;
    };

    /// The same, with the parts of a document looked at by processes of their own; without worker
    /// processes, there are none but the first.
    bool atEach(const Sharing& sharing) const;

    /// Whether documents are looked at in other processes.
    bool hasProcesses() const { return options_.workers.jobs != 0U; }

    const std::vector<Input>& inputs() const { return inputs_; }
    KarvelPDFLibraryCPDylibCPP1311& library() const { return *library_; }
    const std::vector<std::string>& passwords() const { return passwords_; }

    /// The document that "-" stands for; empty where no input is that.
    const std::string& standardInput() const { return standardInput_; }

    ~Looking();
    Looking(Looking&&) noexcept;

private:
    Looking(const LookOptions& options, const Streams& streams);
    std::string lookAt(const Sharing& sharing, const std::string& input, std::size_t part) const;
    std::size_t smallOnesFrom(std::size_t first, std::size_t atOnce) const;
    bool inProcesses(const Sharing& sharing) const;

    const LookOptions& options_;
    const Streams& streams_;
    std::vector<std::string> programFiles_;
    std::vector<std::string> passwords_;
    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library_;
    std::vector<Input> inputs_;
    std::string standardInput_;
    std::optional<Error> unreadable_; ///< why standard input can't be read
};

} // namespace vantora::cli
