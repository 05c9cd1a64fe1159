#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// Memory for the lights of a map, side by side in the order of the file, in which frames walk
/// them. All of it goes back once no light is left. Main thread only.
class LightPool
{
public:
    /// `size` and `alignment` are those of every block, and a block is at least a pointer.
    LightPool(std::size_t size, std::size_t alignment);
    LightPool(const LightPool&) = delete;
    LightPool& operator=(const LightPool&) = delete;
    ~LightPool();

    [[nodiscard]] void* take();
    void giveBack(void* block);

private:
    struct Free
    {
        Free* next;
    };

    void release();

    std::size_t m_size = 0;
    std::size_t m_alignment = 0;
    std::vector<unsigned char*> m_slabs; // owned
    std::size_t m_used = 0;              // blocks of the last slab that were ever taken
    std::size_t m_live = 0;
    Free* m_free = nullptr;
};
