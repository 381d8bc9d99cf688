// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/list.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace tessaro {
namespace {

struct Letter : ListNode {
    explicit Letter(char c) : name(c) {}
    char name;
};

/// The names from head to tail; the backward links and the count have to tell the same.
std::string names(const List<Letter>& list)
{
    std::string forward;
    for (const Letter* l = list.head(); l; l = List<Letter>::next(l)) forward += l->name;
    std::string backward;
    for (const Letter* l = list.tail(); l; l = List<Letter>::prev(l)) backward += l->name;
    EXPECT_EQ(forward, std::string(backward.rbegin(), backward.rend()));
    EXPECT_EQ(forward.size(), list.count());
    return forward;
}

TEST(List, KeepsOrderThroughEveryWayInAndOut)
{
    List<Letter> list;
    Letter a('a'), b('b'), c('c'), d('d'), e('e');
    list.addTail(&c);
    list.addHead(&a);
    list.insertAfter(&a, &b);
    list.insertAfter(&c, &e);
    list.insertBefore(&e, &d);
    EXPECT_EQ(names(list), "abcde");
    EXPECT_EQ(list.at(3), &d);
    EXPECT_EQ(list.at(5), nullptr);

    for (Letter* l : {&c, &a, &e}) list.remove(l);
    EXPECT_EQ(names(list), "bd");
    EXPECT_EQ(list.find(&c), nullptr);
    EXPECT_EQ(list.takeHead(), &b);
    EXPECT_EQ(list.takeHead(), &d);
    EXPECT_EQ(list.takeHead(), nullptr);
    EXPECT_EQ(names(list), "");
}

TEST(List, PositionsOutliveMovesBetweenLists)
{
    List<Letter> from;
    List<Letter> to;
    Letter a('a'), b('b'), c('c');
    for (Letter* l : {&a, &b, &c}) from.addTail(l);
    const POSITION pos = &b;

    from.remove(&b);
    to.addHead(&b);
    EXPECT_EQ(List<Letter>::get(pos)->name, 'b');
    EXPECT_EQ(names(from) + '/' + names(to), "ac/b");
    to.remove(&b);
    from.insertBefore(&a, &b);
    EXPECT_EQ(from.head(), List<Letter>::get(pos));
    EXPECT_EQ(names(from) + '/' + names(to), "bac/");

    // A copy is a value, not a place: neither list may see it.
    const Letter copy = b;
    EXPECT_EQ(copy.next, nullptr);
    c = b;
    EXPECT_EQ(names(from), "bab");
}

} // namespace
} // namespace tessaro
