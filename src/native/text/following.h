#pragma once

namespace quorvel::native {

/// Whether a text view keeps the end of its text in sight. A view follows from the first line on,
/// until the user scrolls the end out of sight; the view then stays where the user has put the
/// view. The user takes the following up again by bringing the end back into sight.
///
/// The view reports the user's scrolling alone (wheel, scroll bar, keys, a find hit, a drag of the
/// selection). Added text, another font, another size and the showing of the view change nothing.
class Following {
 public:
  /// `wanted` is the field's property `FollowsEnd`; without the property a view never follows.
  void Want(bool wanted) {
    if (wanted != mWanted) mAtEnd = true;
    mWanted = wanted;
  }
  /// The user has scrolled, or has tried to and the view was at its limit already.
  void UserScrolled(bool end_in_sight) { mAtEnd = end_in_sight; }
  /// Whether the view has to move to its end whenever the end would be out of sight.
  [[nodiscard]] bool KeepsEnd() const { return mWanted && mAtEnd; }

 private:
  bool mWanted = false;
  bool mAtEnd = true;
};

}  // namespace quorvel::native
