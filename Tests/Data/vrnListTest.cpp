#include "VarnholtLib/Data/vrnList.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "Platform/Runtime/Format.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Data/vrnNotifyEventList.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

using TTexts = std::vector<String>;

String OutOfBounds(std::int32_t index) {
    return Format(u"List index out of bounds (%d)", {index});
}

// One random operation on the list and on the vector that models it.
void Change(IList<String>& list, TTexts& model, std::mt19937& random) {
    const auto count = static_cast<std::int32_t>(model.size());
    const String item = Format(u"%d", {random() % 8});
    const std::int32_t index = static_cast<std::int32_t>(random() % (model.size() + 4)) - 2;
    const bool isItem = index >= 0 && index < count;
    const auto place = model.begin() + std::clamp(index, 0, count);
    const auto found = std::ranges::find(model, item);
    const auto succeeds = [&](bool isFit, const std::function<void()>& call) {
        EXPECT_EQ(Raised<EListError>(call), isFit ? u"(nothing raised)" : OutOfBounds(index));
        return isFit;
    };
    const auto operation = random() % 40;
    if (operation < 10) {
        EXPECT_EQ(list.Add(item), count);
        model.push_back(item);
    } else if (operation < 15) {
        list.Prepend(item);
        model.insert(model.begin(), item);
    } else if (operation < 20) {
        if (succeeds(isItem || index == count, [&] { list.Insert(index, item); })) model.insert(place, item);
    } else if (operation < 25) {
        if (succeeds(isItem, [&] { list.Delete(index); })) model.erase(place);
    } else if (operation < 30) {
        if (succeeds(isItem, [&] { list.SetItem(index, item); })) *place = item;
    } else if (operation < 36) {
        EXPECT_EQ(list.Remove(item), found == model.end() ? -1 : found - model.begin());
        if (found != model.end()) model.erase(found);
    } else if (operation < 38) {
        const auto compare = [](const String& a, const String& b) { return a.compare(b); };
        const auto ordered = list.OrderBy(compare);
        list.Sort(compare);
        std::ranges::sort(model);
        EXPECT_EQ(ordered->ToArray(), model);
    } else if (operation == 38 && count < 20) {
        list.AddRange(list);
        for (std::size_t i = 0; std::cmp_less(i, count); ++i) model.push_back(String(model[i]));
    } else if (random() % 5 == 0) {
        list.Clear();
        model.clear();
    }
}

void ExpectSame(const IList<String>& list, const TTexts& model, const String& wanted, std::int32_t num) {
    const auto count = static_cast<std::int32_t>(model.size());
    const auto matches = [&](const String& item) { return item == wanted; };
    const auto found = std::ranges::find(model, wanted);
    const bool isFound = found != model.end();
    const auto index = isFound ? static_cast<std::int32_t>(found - model.begin()) : -1;
    const auto number = static_cast<std::int32_t>(std::ranges::count(model, wanted));
    ASSERT_EQ(list.ToArray(), model);
    EXPECT_TRUE(list.Count() == count && list.GetIsEmpty() == model.empty());
    EXPECT_TRUE(list.IndexOf(wanted) == index && list.IndexOfMatch(matches) == index);
    EXPECT_TRUE(list.Contains(wanted) == isFound && list.Any(matches) == isFound);
    EXPECT_TRUE(list.Count(matches) == number && list.All(matches) == (number == count));
    EXPECT_EQ(list.Where(matches)->ToArray(), TTexts(static_cast<std::size_t>(number), wanted));
    EXPECT_EQ(list.FirstOrDefault(matches, u"-"), isFound ? wanted : u"-");
    EXPECT_EQ(list.FirstOrDefault(u"-"), model.empty() ? u"-" : model.front());
    TTexts ends, walked, called;
    const StringView expected = model.empty() ? u"The list is empty" : u"(nothing raised)";
    EXPECT_EQ(Raised<EInvalidOperation>([&] { ends.push_back(list.First()); }), expected);
    EXPECT_EQ(Raised<EInvalidOperation>([&] { ends.push_back(list.Last()); }), expected);
    EXPECT_TRUE(model.empty() ? ends.empty() : ends == (TTexts{model.front(), model.back()}));
    for (const String& item : list) walked.push_back(item);
    list.Each([&](const String& item) { called.push_back(item); });
    EXPECT_TRUE(walked == model && called == model);

    const auto cut = model.begin() + std::clamp(num, 0, count);
    const String taken =
        Raised<EListError>([&] { EXPECT_EQ(list.Take(num)->ToArray(), TTexts(model.begin(), cut)); });
    const String skipped =
        Raised<EListError>([&] { EXPECT_EQ(list.Skip(num)->ToArray(), TTexts(cut, model.end())); });
    EXPECT_EQ(taken, num > count ? OutOfBounds(count) : u"(nothing raised)");
    EXPECT_EQ(skipped, num < 0 ? OutOfBounds(num) : u"(nothing raised)");
}

TEST(List, BehavesAsAVectorDoes) {
    std::mt19937 random(1);
    const auto list = TInterfacedList<String>::CreateFromArray({u"1", u"0", u"1"});
    TTexts model = list->ToArray();
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        Change(*list, model, random);
        const auto num = static_cast<std::int32_t>(random() % (model.size() + 4)) - 2;
        ExpectSame(*list, model, Format(u"%d", {random() % 8}), num);
    }
}

TEST(List, WalksReadTheListAtEachStep) {
    const auto walk = [](const std::function<void(IList<String>&, const String&)>& change) {
        const auto list = TInterfacedList<String>::CreateFromArray({u"a", u"b", u"c"});
        String walked;
        list->Each([&](const String& item) {
            change(*list, item);
            walked += item;  // alive, whatever has become of its place
        });
        return walked;
    };
    EXPECT_EQ(walk([](auto& list, auto& item) {
                  if (item.size() == 1 && item < u"c") list.Add(item + u"+");
              }),
              u"abca+b+");
    EXPECT_EQ(walk([](auto& list, auto&) { list.Clear(); }), u"a");
    EXPECT_EQ(walk([](auto& list, auto& item) { list.Remove(item); }), u"ac");

    const auto list = TInterfacedList<std::int32_t>::CreateFromArray({1, 2});
    int steps = 0;
    for (const std::int32_t item : *list) {
        if (++steps < 5) list->Add(item);
    }
    list->Sort([&](std::int32_t a, std::int32_t b) { return list->Clear(), a - b; });
    EXPECT_THAT(list->ToArray(), ElementsAre(1, 1, 1, 2, 2, 2));
    const auto kept = list->Where([&](std::int32_t item) { return list->Clear(), item == 1; });
    EXPECT_THAT(kept->ToArray(), ElementsAre(1));

    const auto enumerator = kept->GetEnumerator();
    EXPECT_EQ(Raised<EListError>([&] { static_cast<void>(enumerator->GetCurrent()); }), OutOfBounds(-1));
    EXPECT_TRUE(enumerator->MoveNext() && enumerator->GetCurrent() == 1 && !enumerator->MoveNext());
    EXPECT_EQ(Raised<EListError>([&] { static_cast<void>(enumerator->GetCurrent()); }), OutOfBounds(1));
    enumerator->Reset();
    EXPECT_TRUE(enumerator->MoveNext());
}

TEST(List, EmptyCallbacksAreRefusedByName) {
    TInterfacedList<String> list;
    ExpectRaised<EArgumentNilException>({{[&] { static_cast<void>(list.Count(nullptr)); }, u"func"},
                                         {[&] { list.Each(nullptr); }, u"eachFunc"},
                                         {[&] { static_cast<void>(list.All(nullptr)); }, u"matchFunc"},
                                         {[&] { list.Sort(nullptr); }, u"sortFunc"}});
}

// A new list can be walked while it is a temporary, and not be destroyed before the walk.
template <typename T>
concept CDereferences = requires(T list) {
    *std::forward<T>(list);
};
static_assert(CDereferences<TNewList<String>&> && !CDereferences<TNewList<String>&&>);

// As the library's own collections do: an interface that extends the list's, and a class that joins the two.
class INamedTexts : public virtual IList<String> {};

struct TNeverEmpty : TInterfacedList<String> {
    using TInterfacedList::Count;
    [[nodiscard]] std::int32_t Count() const override { return 1; }
};

class TNamedTexts : public TInterfacedList<String>, public virtual INamedTexts {
public:
    std::int32_t Add(String item) override { return TInterfacedList::Add(item + u"!"); }
    [[nodiscard]] String GetItem(std::int32_t index) const override {
        return u"<" + TInterfacedList::GetItem(index) + u">";
    }
};

TEST(List, DerivedClassesReplaceWhatTheLibraryCalls) {
    const std::shared_ptr<INamedTexts> texts = std::make_shared<TNamedTexts>();
    texts->AddArray(std::vector<String>{u"a", u"b"});
    const auto first = texts->Take(1);
    texts->AddRange(*first);
    EXPECT_THAT(texts->ToArray(), ElementsAre(u"a!", u"b!", u"<a!>!"));
    const std::shared_ptr<IReadOnlyList<String>> found =
        texts->Where([](const String& t) { return t[1] == u'b'; });
    EXPECT_THAT(found->ToArray(), ElementsAre(u"<b!>"));
    EXPECT_FALSE(TNeverEmpty().GetIsEmpty());
    EXPECT_TRUE(std::dynamic_pointer_cast<TNamedTexts>(std::shared_ptr<IReadOnlyList<String>>(texts)));
    EXPECT_TRUE(std::dynamic_pointer_cast<TInterfacedList<String>>(found));  // made in the library
}

TEST(List, ADestroyedItemFindsTheListWhole) {
    TInterfacedList<std::shared_ptr<int>> list;
    std::vector<std::int32_t> counts;
    const auto add = [&] {
        list.Add(std::shared_ptr<int>(nullptr, [&](int*) { counts.push_back(list.Count()); }));
    };
    for (int i = 0; i < 4; ++i) add();
    list.Delete(1);
    list.SetItem(0, nullptr);
    list.Clear();
    EXPECT_THAT(counts, ElementsAre(3, 3, 0, 0));
}

class TClock final : public TObject {};

TEST(NotifyEventList, SendsToAllWhateverOneRaises) {
    TNotifyEventList list;
    TClock clock;
    String called;
    const auto event = [&](Char name, const std::function<void()>& action = nullptr) {
        return TNotifyEvent([&called, &clock, name, action](TObject* sender) {
            EXPECT_EQ(sender, &clock);
            called += name;
            if (action) action();
        });
    };
    const auto send = [&] {
        called.clear();
        list.Send(&clock);
        return called;
    };
    const TNotifyEvent b = event(u'b', [] { throw std::runtime_error("b"); });
    const TNotifyEvent e = event(u'e');
    list.AddArray(std::vector{event(u'a'), b, event(u'c', [] { throw 5; }), TNotifyEvent(),
                              TNotifyEvent(std::function<void(TObject*)>()), event(u'd')});
    EXPECT_EQ(send(), u"abcd");

    list.Add(event(u'r', [&] { list.Remove(b), list.Remove(e), list.Add(event(u'n')); }));
    list.Add(e);
    list.Add(event(u'z'));
    EXPECT_EQ(send(), u"abcdrz");  // e is removed before its turn, n is called by the next Send
    EXPECT_EQ(send(), u"acdrzn");
    list.Prepend(event(u'x', [&] { list.Clear(); }));
    EXPECT_EQ(send(), u"x");
    EXPECT_EQ(send(), u"");
}

}  // namespace
}  // namespace Varnholt::Test
