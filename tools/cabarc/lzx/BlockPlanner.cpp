// Blocks are planned in the order in which they will be written, because the code lengths of each are sent
// as differences from those of the last coded block before it. For each the coded form is worked out to its
// last bit: counts, codes, the cheaper of verbatim and aligned, the encoded code lengths. If the plain
// bytes cost less, all that is dropped and the decoder's code lengths stay what they were.
//
// The choice is greedy: an uncompressed block leaves the decoder with older code lengths, which may make
// the next header dearer by more than was saved. But uncompressed blocks are rare in data that compresses,
// and a header is a small part of its block, so a search over all sequences of types would have little to
// gain.
//
// A coded block without trees has to be planned again, because its items have changed or because the coded
// block before it may have gone. Replan does that. It keeps the choice between coded and uncompressed, so
// that moving borders cannot go round in circles. For the same reason a block that the shift of a border
// has made dearer than its plain bytes stays coded; a few items decide little.

#include "tools/cabarc/lzx/BlockPlanner.h"

#include <utility>

namespace tools::cabarc::lzx {

namespace {

bool IsOdd(std::uint32_t n) {
    return n % 2 != 0;
}

// Readers disagree about where the pad byte of an odd-sized uncompressed block goes, so such a block gives
// items to its neighbours until it begins and ends at even places; only the end of the folder may be odd. A
// block that has nothing left is removed.
void EvenOutUncompressed(std::span<const Item> items, std::vector<BlockPlan>& plans) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        if (plans[i].IsCoded()) continue;
        BlockSpan& span = plans[i].Span;
        // The first block of a segment begins at a frame border, which is even.
        while (IsOdd(span.Begin) && span.FirstItem < span.EndItem) {
            span.Begin += items[span.FirstItem++].Length();
            plans[i - 1].Span.End = span.Begin;
            plans[i - 1].Span.EndItem = span.FirstItem;
            plans[i - 1].Trees.reset();
        }
        while (IsOdd(span.End) && i + 1 < plans.size() && span.FirstItem < span.EndItem) {
            span.End -= items[--span.EndItem].Length();
            plans[i + 1].Span.Begin = span.End;
            plans[i + 1].Span.FirstItem = span.EndItem;
            plans[i + 1].Trees.reset();
        }
    }
    std::erase_if(plans, [](const BlockPlan& plan) { return plan.Span.Bytes() == 0; });
}

// The items of a block, taken from its front in parts that end at given places (bytes from the start of the
// segment). No item crosses the border of a frame, so cuts at such borders fall between items.
class BlockCutter {
 public:
    BlockCutter(std::span<const Item> items, const BlockSpan& block) : items_(items), rest_(block) {}

    BlockSpan TakeUpTo(std::uint32_t limit) {
        BlockSpan part{rest_.FirstItem, rest_.FirstItem, rest_.Begin, rest_.Begin};
        while (part.EndItem < rest_.EndItem && part.End < limit) part.End += items_[part.EndItem++].Length();
        rest_.FirstItem = part.EndItem;
        rest_.Begin = part.End;
        return part;
    }

 private:
    std::span<const Item> items_;
    BlockSpan rest_;
};

// A block without trees yet.
BlockPlan Unplanned(const BlockSpan& span, BlockType type) {
    return {span, type, {}, std::nullopt};
}

}  // namespace

EncodedTrees::EncodedTrees(const CodeLengths& before, const CodeLengths& codes, std::size_t mainSymbols)
    : Literals(std::span(before.Main).first(kLiterals), std::span(codes.Main).first(kLiterals)),
      Matches(std::span(before.Main).first(mainSymbols).subspan(kLiterals),
              std::span(codes.Main).first(mainSymbols).subspan(kLiterals)),
      Lengths(before.Length, codes.Length) {}

void EncodedTrees::Write(BitWriter& writer) const {
    Literals.Write(writer);
    Matches.Write(writer);
    Lengths.Write(writer);
}

BlockPlanner::BlockPlanner(int windowBits)
    : mainSymbols_(static_cast<std::size_t>(MainSymbols(windowBits))) {}

std::vector<BlockPlan> BlockPlanner::Plan(std::span<const Item> items,
                                          std::span<const BlockSpan> blocks) const {
    std::vector<BlockPlan> plans;
    CodeLengths before = before_;
    for (const BlockSpan& span : blocks) {
        SymbolCounts counts;
        counts.Add(span.ItemsIn(items));
        const BodyPlan body = PlanBody(counts);
        EncodedTrees trees(before, body.Codes, mainSymbols_);
        if (body.Bits + trees.Bits() <= UncompressedBits(span.Bytes())) {
            plans.push_back({span, body.Type, body.Codes, std::move(trees)});
            before = body.Codes;
        } else if (!plans.empty() && !plans.back().IsCoded()) {
            plans.back().Span.EndItem = span.EndItem;
            plans.back().Span.End = span.End;
        } else {
            plans.push_back(Unplanned(span, BlockType::Uncompressed));
        }
    }
    EvenOutUncompressed(items, plans);
    Replan(items, plans);
    return plans;
}

void BlockPlanner::Replan(std::span<const Item> items, std::vector<BlockPlan>& plans) const {
    const CodeLengths* before = &before_;
    bool beforeHasChanged = false;
    for (BlockPlan& plan : plans) {
        if (!plan.IsCoded()) continue;
        const bool itemsHaveChanged = !plan.Trees.has_value();
        if (itemsHaveChanged) {
            SymbolCounts counts;
            counts.Add(plan.Span.ItemsIn(items));
            const BodyPlan body = PlanBody(counts);
            plan.Type = body.Type;
            plan.Codes = body.Codes;
        }
        if (itemsHaveChanged || beforeHasChanged) plan.Trees.emplace(*before, plan.Codes, mainSymbols_);
        beforeHasChanged = itemsHaveChanged;
        before = &plan.Codes;
    }
}

std::vector<BlockPlan> BlockPlanner::StoreFrame(std::span<const Item> items, std::vector<BlockPlan> plans,
                                                std::uint32_t begin, std::uint32_t end) const {
    std::vector<BlockPlan> result;
    BlockSpan stored{0, 0, begin, end};
    for (BlockPlan& plan : plans) {
        if (plan.Span.End <= begin) {
            result.push_back(std::move(plan));
            continue;
        }
        if (plan.Span.Begin >= end) {
            // The coded block before it may have lost all its items and gone.
            plan.Trees.reset();
            result.push_back(std::move(plan));
            continue;
        }
        BlockCutter cutter(items, plan.Span);
        const BlockSpan before = cutter.TakeUpTo(begin);
        const BlockSpan inside = cutter.TakeUpTo(end);
        const BlockSpan after = cutter.TakeUpTo(plan.Span.End);
        if (before.Bytes() > 0) result.push_back(Unplanned(before, plan.Type));
        if (inside.Begin == begin) stored.FirstItem = inside.FirstItem;
        stored.EndItem = inside.EndItem;
        if (inside.End == end) result.push_back(Unplanned(stored, BlockType::Uncompressed));
        if (after.Bytes() > 0) result.push_back(Unplanned(after, plan.Type));
    }
    Replan(items, result);
    return result;
}

void BlockPlanner::Commit(std::span<const BlockPlan> plans) {
    for (const BlockPlan& plan : plans)
        if (plan.IsCoded()) before_ = plan.Codes;
}

}  // namespace tools::cabarc::lzx
