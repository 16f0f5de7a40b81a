// A sort for comparisons that may contradict themselves.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// Sorts stably by `before`. Whatever that answers, even something else at each call, every item is still
/// there once and nothing outside the vector is touched: runs are merged between bounds, and no answer is
/// taken as a guard.
template <class Item, class Before>
void mergeSort(std::vector<Item>& items, Before before) {
    std::vector<Item> merged(items.size());
    for (std::size_t width = 1; width < items.size(); width *= 2) {
        for (std::size_t first = 0; first < items.size(); first += 2 * width) {
            const std::size_t middle = std::min(first + width, items.size());
            const std::size_t last = std::min(first + 2 * width, items.size());
            std::size_t left = first;
            std::size_t right = middle;
            for (std::size_t to = first; to < last; ++to) {
                const bool takesRight = left == middle || (right < last && before(items[right], items[left]));
                merged[to] = items[takesRight ? right++ : left++];
            }
        }
        items.swap(merged);
    }
}
