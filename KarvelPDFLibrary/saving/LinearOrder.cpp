#include "KarvelPDFLibrary/saving/LinearOrder.h"

#include "KarvelPDFLibrary/saving/ObjectUsers.h"

#include <algorithm>
#include <numeric>

namespace karvel::saving {

namespace {

/// Walks for the lists of what pages share end after so many steps in all, so that a small file
/// cannot take hours: the list costs as much as there are pages times shared objects. Pages after
/// that get an empty list, which costs a reader a request and nothing else.
constexpr std::uint64_t mostSteps = 400'000'000;

class Planner {
public:
    Planner(Document& document, const LiveGraph& graph, bool withReferenceStreams)
        : document_(document), index_(*document.index()), objects_(document.objects()),
          graph_(graph), users_(document, graph), withReferenceStreams_(withReferenceStreams),
          catalog_(static_cast<std::uint32_t>(document.catalog().getObjectID())),
          unit_(graph.size())
    {
    }

    LinearOrder run()
    {
        showsOutlineFirst_ = outlineShowsFirst();
        findUnits();
        placeUnits();
        placePages();
        placeRest();
        listShared();
        giveNumbers();
        return std::move(order_);
    }

private:
    bool outlineShowsFirst();
    bool staysPacked(std::uint32_t member);
    void findUnits();
    void placeUnits();
    void placePages();
    void placeRest();
    void appendOutline(std::vector<std::uint32_t>& part);
    void listShared();
    bool endsList(std::uint32_t object) const;
    void listShared(std::size_t page);
    std::uint32_t generation(std::uint32_t object) const
    {
        return index_.contains(object) ? index_.object(object).generation : 0;
    }
    void giveNumbers();
    void giveMembersNumbers(const std::vector<std::uint32_t>& part);
    void number(std::uint32_t object)
    {
        order_.numbers.set(object, generation(object), order_.size++);
    }
    void number(const std::vector<std::uint32_t>& part)
    {
        std::for_each(part.begin(), part.end(), [this](std::uint32_t unit) { number(unit); });
    }

    Document& document_;
    const index::ReferenceIndex& index_;
    ObjectView objects_;
    const LiveGraph& graph_;
    ObjectUsers users_;
    bool withReferenceStreams_;
    std::uint32_t catalog_;
    bool showsOutlineFirst_ = false;
    LinearOrder order_;

    /// The object or object stream in which each object stands in the output; 0 when in none.
    std::vector<std::uint32_t> unit_;
    std::vector<std::uint32_t> outline_;
    std::vector<std::pair<std::int32_t, std::uint32_t>> private_; // page and unit
    std::vector<std::pair<std::int32_t, std::uint32_t>> thumbnails_;
    std::vector<std::uint32_t> nodes_;
    std::vector<std::uint32_t> sharedThumbnails_;
    std::vector<std::uint32_t> others_;

    // for the lists of what pages share
    std::vector<std::uint32_t> position_; // of units in the list that is shared from, from 1
    std::vector<std::uint32_t> seen_;     // the last page whose walk came by
    std::vector<std::uint32_t> pending_;
    bool openingEndsList_ = true;
    std::uint64_t steps_ = 0;
};

bool Planner::outlineShowsFirst()
{
    QPDFObjectHandle catalog = document_.changes().present(document_.catalog().getObjGen());
    QPDFObjectHandle mode = catalog.getKey("/PageMode");
    return mode.isName() && mode.getName() == "/UseOutlines" && catalog.hasKey("/Outlines");
}

bool Planner::staysPacked(std::uint32_t member)
{
    if (!graph_.isThere(member) || graph_.isPage(member) || member == catalog_) {
        return false;
    }
    const auto number = static_cast<int>(member);
    const bool hasText =
        objects_.unchanged(number) != nullptr || objects_.changedText(number) != nullptr;
    return hasText || !objects_.object(number).isStream();
}

void Planner::findUnits()
{
    for (std::uint32_t object = 1; object < graph_.size(); ++object) {
        const bool isContainer =
            index_.contains(object) && index_.object(object).kind == index::Kind::ObjectStream;
        unit_[object] = graph_.isThere(object) && !isContainer ? object : 0;
    }
    for (const index::ObjectStreamMembers& stream : index_.objectStreams()) {
        PackedStream packed{stream.object, {}};
        for (const std::uint32_t member : stream.members) {
            if (staysPacked(member)) {
                packed.members.push_back(member);
                unit_[member] = stream.object;
                users_.join(member, stream.object);
            }
        }
        if (!packed.members.empty()) {
            unit_[stream.object] = stream.object;
            order_.streams.push_back(std::move(packed));
        }
    }
    std::sort(order_.streams.begin(), order_.streams.end(),
              [](const PackedStream& a, const PackedStream& b) { return a.object < b.object; });
}

/// What the clauses of F.3 make of an object by its users. Of several uses the first counts that
/// is asked for here: an object needed early must not come late.
void Planner::placeUnits()
{
    using Users = ObjectUsers;
    std::vector<std::uint32_t> firstPageShared;
    order_.openDocument.push_back(catalog_);
    order_.firstPage.push_back(static_cast<std::uint32_t>(document_.order().at(1).object));
    for (std::uint32_t unit = 1; unit < graph_.size(); ++unit) {
        if (unit_[unit] != unit || unit == catalog_ || unit == order_.firstPage.front()) {
            continue;
        }
        const std::int32_t page = users_.onePage(unit);
        const std::int32_t thumbnail = users_.oneThumbnail(unit);
        const bool hasThumbnail =
            thumbnail != Users::none || users_.has(unit, Users::ManyThumbnails);
        if (users_.has(unit, Users::Outline)) {
            outline_.push_back(unit);
        } else if (users_.has(unit, Users::OpenDocument)) {
            order_.openDocument.push_back(unit);
        } else if (users_.has(unit, Users::FirstPage)) {
            const bool isPrivate = page == Users::none && !hasThumbnail &&
                                   !users_.has(unit, Users::ManyPages | Users::Others);
            (isPrivate ? order_.firstPage : firstPageShared).push_back(unit);
        } else if (users_.has(unit, Users::ManyPages)) {
            order_.shared.push_back(unit);
        } else if (page != Users::none && !hasThumbnail && !users_.has(unit, Users::Others)) {
            private_.emplace_back(page, unit);
        } else if (users_.has(unit, Users::ManyThumbnails)) {
            sharedThumbnails_.push_back(unit);
        } else if (thumbnail != Users::none && !users_.has(unit, Users::Others)) {
            thumbnails_.emplace_back(thumbnail, unit);
        } else if (index_.contains(unit) && index_.object(unit).kind == index::Kind::PageNode) {
            nodes_.push_back(unit);
        } else {
            others_.push_back(unit);
        }
    }
    order_.firstPage.insert(order_.firstPage.end(), firstPageShared.begin(), firstPageShared.end());
    if (showsOutlineFirst_) {
        appendOutline(order_.firstPage);
    }
}

/// The outline's dictionary first, by which readers know where it begins.
void Planner::appendOutline(std::vector<std::uint32_t>& part)
{
    QPDFObjectHandle catalog = document_.changes().present(document_.catalog().getObjGen());
    const std::vector<std::uint32_t> start = referencesInEntry(catalog.getKey("/Outlines"));
    const std::uint32_t first =
        !start.empty() && start.front() < unit_.size() ? unit_[start.front()] : 0;
    std::stable_partition(outline_.begin(), outline_.end(),
                          [first](std::uint32_t unit) { return unit == first; });
    part.insert(part.end(), outline_.begin(), outline_.end());
    order_.outlineStart = outline_.empty() ? 0 : outline_.front();
    order_.outlineCount = static_cast<std::uint32_t>(outline_.size());
}

void Planner::placePages()
{
    order_.objectsOfPage.push_back(static_cast<std::uint32_t>(order_.firstPage.size()));
    std::stable_sort(private_.begin(), private_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    auto next = private_.begin();
    for (std::int32_t page = 1; page < document_.pageCount(); ++page) {
        const std::size_t before = order_.otherPages.size();
        const auto object = static_cast<std::uint32_t>(document_.order().at(page + 1).object);
        order_.otherPages.push_back(object);
        for (; next != private_.end() && next->first == page; ++next) {
            if (next->second != object) {
                order_.otherPages.push_back(next->second);
            }
        }
        order_.objectsOfPage.push_back(
            static_cast<std::uint32_t>(order_.otherPages.size() - before));
    }
}

void Planner::placeRest()
{
    std::stable_sort(thumbnails_.begin(), thumbnails_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    order_.rest = nodes_;
    for (const auto& [page, unit] : thumbnails_) {
        order_.rest.push_back(unit);
    }
    order_.rest.insert(order_.rest.end(), sharedThumbnails_.begin(), sharedThumbnails_.end());
    if (!showsOutlineFirst_) {
        appendOutline(order_.rest);
    }
    order_.rest.insert(order_.rest.end(), others_.begin(), others_.end());
}

void Planner::listShared()
{
    position_.resize(graph_.size());
    seen_.resize(graph_.size());
    std::uint32_t position = 0;
    for (const auto* part : {&order_.firstPage, &order_.shared}) {
        for (const std::uint32_t unit : *part) {
            position_[unit] = ++position;
        }
    }
    // What is needed for opening leads to more of it, to the outline, and to nothing else.
    openingEndsList_ = !showsOutlineFirst_ ||
                       std::none_of(outline_.begin(), outline_.end(), [this](std::uint32_t unit) {
                           return users_.has(unit, ObjectUsers::OpenDocument);
                       });
    order_.sharedCounts.resize(static_cast<std::size_t>(document_.pageCount()));
    for (std::size_t page = 1; page < order_.sharedCounts.size() && steps_ < mostSteps; ++page) {
        const std::size_t before = order_.sharedByPages.size();
        listShared(page);
        const auto start = order_.sharedByPages.begin() + static_cast<std::ptrdiff_t>(before);
        std::sort(start, order_.sharedByPages.end());
        order_.sharedCounts[page] =
            static_cast<std::uint32_t>(order_.sharedByPages.size() - before);
    }
}

bool Planner::endsList(std::uint32_t object) const
{
    return (openingEndsList_ && users_.has(object, ObjectUsers::OpenDocument)) ||
           (!showsOutlineFirst_ && users_.has(object, ObjectUsers::Outline));
}

void Planner::listShared(std::size_t page)
{
    const auto stamp = static_cast<std::uint32_t>(page);
    const auto reach = [&](LiveGraph::Objects objects) {
        for (const std::uint32_t object : objects) {
            ++steps_;
            if (!graph_.isThere(object) || graph_.isPage(object) || seen_[object] == stamp) {
                continue;
            }
            seen_[object] = stamp;
            const std::uint32_t unit = unit_[object];
            if (unit != 0 && position_[unit] != 0 && (unit == object || seen_[unit] != stamp)) {
                seen_[unit] = stamp;
                order_.sharedByPages.push_back(position_[unit] - 1);
            }
            if (!endsList(object)) {
                pending_.push_back(object);
            }
        }
    };
    reach(graph_.ofPage(page));
    while (!pending_.empty()) {
        const std::uint32_t object = pending_.back();
        pending_.pop_back();
        reach(graph_.of(object));
    }
}

void Planner::giveMembersNumbers(const std::vector<std::uint32_t>& part)
{
    for (const std::uint32_t unit : part) {
        if (const PackedStream* stream = order_.stream(unit)) {
            number(stream->members);
        }
    }
}

void Planner::giveNumbers()
{
    order_.numbers = Renumbering(graph_.size());
    order_.size = 1;
    const std::vector<std::uint32_t>* mainParts[] = {&order_.otherPages, &order_.shared,
                                                     &order_.rest};
    for (const auto* part : mainParts) {
        number(*part);
    }
    order_.mainReferences = withReferenceStreams_ ? order_.size++ : 0;
    for (const auto* part : mainParts) {
        giveMembersNumbers(*part);
    }
    order_.parameters = order_.size++;
    order_.firstReferences = withReferenceStreams_ ? order_.size++ : 0;
    number(order_.openDocument);
    order_.hints = order_.size++;
    number(order_.firstPage);
    giveMembersNumbers(order_.openDocument);
    giveMembersNumbers(order_.firstPage);
}

} // namespace

const PackedStream* LinearOrder::stream(std::uint32_t object) const
{
    const auto found = std::lower_bound(
        streams.begin(), streams.end(), object,
        [](const PackedStream& stream, std::uint32_t number) { return stream.object < number; });
    return found != streams.end() && found->object == object ? &*found : nullptr;
}

LinearOrder linearOrder(Document& document, const LiveGraph& graph, bool withReferenceStreams)
{
    return Planner(document, graph, withReferenceStreams).run();
}

} // namespace karvel::saving
