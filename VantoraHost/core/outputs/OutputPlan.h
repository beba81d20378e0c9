#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/outputs/OutputName.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantora {

/// Where the results of a run go.
struct ToFile {
    std::string path;
};
/// Under the inputs' places, in folders that are made where they are missing, but for the first
/// one.
struct ToFolder {
    std::string path;
    std::optional<OutputName> name; ///< for other names than the inputs'
};
struct InPlace {
    bool backup = false;
};
struct ToStandardOutput {};
using Destination = std::variant<ToFile, ToFolder, InPlace, ToStandardOutput>;

/// What outputs are called by their inputs' names alone, before anybody looks what is there.
class PlannedNames {
public:
    /// The inputs and the destination must outlive the object.
    PlannedNames(const std::vector<Input>& inputs, const Destination& destination)
        : inputs_(inputs), destination_(destination)
    {
    }

    /// The output of the input at a place in the list.
    std::string of(std::size_t input) const;

private:
    const std::vector<Input>& inputs_;
    const Destination& destination_;
};

/// What happens where an output would have the name of a file that exists, or of another output.
enum class TakenName {
    Refuse,
    Replace, ///< an existing file; not another output
    Number,  ///< the output takes the first free copy name, such as "report (1).pdf"
};

/// The target of each input, or why that input can't be written, in the order of the inputs. It is
/// all decided before anything is written: an output that exists, that is an input of the run, or
/// that a second input would be written to is refused, as `taken` says. What an input that is left
/// alone gets only keeps others from its place.
/// The error is one that concerns every input: the folder for the outputs isn't there.
Result<std::vector<Result<Target>>> planOutputs(const std::vector<Input>& inputs,
                                                const Destination& destination, TakenName taken);

/// Whether an output may have got that name where `planned` is what it is called: the copy names of
/// that, too, where names are numbered.
bool mayBeNamed(const std::string& output, const std::string& planned, TakenName taken);

/// The error is that a file of the run's own, such as its report, is one of its inputs or the place
/// of an output or a backup.
Outcome keepsApart(const std::string& file, const std::vector<Input>& inputs,
                   const std::vector<Result<Target>>& targets);

/// Makes the folders of the targets that aren't there. A target whose folder can't be made becomes
/// the reason why.
void makeFolders(const std::vector<std::string>& inputs, std::vector<Result<Target>>& targets);

/// The target under the first copy name at which no file exists.
Target underFreeName(Target target);

/// Removes the temporary files that killed runs left in the folders of the targets; those of runs
/// that are alive stay, on other machines as well.
void removeAbandonedFiles(const std::vector<Result<Target>>& targets);

} // namespace vantora
