#include "ui/reading-order.h"

#include <gtkmm/grid.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace {

struct Cell {
  Gtk::Widget* widget;
  int top;
  int left;
  int width;
  int height;
};

std::vector<Cell> cells_of(Gtk::Grid& grid)
{
  std::vector<Cell> cells;
  for (auto* child : grid.get_children()) {
    Cell cell{child, 0, 0, 0, 0};
    gtk_container_child_get(GTK_CONTAINER(grid.gobj()), child->gobj(), "top-attach", &cell.top,
                            "left-attach", &cell.left, "width", &cell.width, "height", &cell.height,
                            nullptr);
    cells.push_back(cell);
  }
  return cells;
}

// Attaches the children from the last to the first, because a grid lists its newest child
// first.
void attach_in_order(Gtk::Grid& grid)
{
  auto cells = cells_of(grid);
  std::sort(cells.begin(), cells.end(), [](const Cell& one, const Cell& other) {
    return std::tie(one.top, one.left) > std::tie(other.top, other.left);
  });
  for (const auto& cell : cells) {
    cell.widget->reference();
    grid.remove(*cell.widget);
    grid.attach(*cell.widget, cell.left, cell.top, cell.width, cell.height);
    cell.widget->unreference();
  }
}

} // namespace

void read_in_visual_order(Gtk::Container& container)
{
  if (auto* const grid = dynamic_cast<Gtk::Grid*>(&container))
    attach_in_order(*grid);
  for (auto* child : container.get_children())
    if (auto* const inner = dynamic_cast<Gtk::Container*>(child))
      read_in_visual_order(*inner);
}
