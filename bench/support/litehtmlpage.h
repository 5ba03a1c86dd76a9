#pragma once

#ifdef HT_PEER_LITEHTML

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wpedantic"
#include <litehtml/litehtml.h>
#pragma GCC diagnostic pop

namespace bench {

/// A litehtml document without a view: fonts of one size, no images, no drawing.
class TLiteHtmlPage final : private litehtml::document_container {
 public:
  explicit TLiteHtmlPage(const std::string& page) {
    FContext.load_master_stylesheet(
        "html,body,div,p,ul,ol,li,h1,h2,h3,h4,table,pre{display:block}head,title,style,script,meta{display:"
        "none}"
        "tr{display:table-row}td,th{display:table-cell}b,h1,h2{font-weight:bold}a{color:blue}");
    FDocument = litehtml::document::createFromUTF8(page.c_str(), this, &FContext);
  }
  litehtml::element::ptr Root() const { return FDocument->root(); }

 private:
  using tchar_t = litehtml::tchar_t;

  litehtml::uint_ptr create_font(const tchar_t*, int size, int, litehtml::font_style, unsigned,
                                 litehtml::font_metrics* metrics) override {
    metrics->height = size;
    return 1;
  }
  void delete_font(litehtml::uint_ptr) override {}
  int text_width(const tchar_t*, litehtml::uint_ptr) override { return 10; }
  void draw_text(litehtml::uint_ptr, const tchar_t*, litehtml::uint_ptr, litehtml::web_color,
                 const litehtml::position&) override {}
  int pt_to_px(int pt) const override { return pt * 4 / 3; }
  int get_default_font_size() const override { return 16; }
  const tchar_t* get_default_font_name() const override { return "Arial"; }
  void draw_list_marker(litehtml::uint_ptr, const litehtml::list_marker&) override {}
  void load_image(const tchar_t*, const tchar_t*, bool) override {}
  void get_image_size(const tchar_t*, const tchar_t*, litehtml::size&) override {}
  void draw_background(litehtml::uint_ptr, const litehtml::background_paint&) override {}
  void draw_borders(litehtml::uint_ptr, const litehtml::borders&, const litehtml::position&, bool) override {}
  void set_caption(const tchar_t*) override {}
  void set_base_url(const tchar_t*) override {}
  void link(const std::shared_ptr<litehtml::document>&, const litehtml::element::ptr&) override {}
  void on_anchor_click(const tchar_t*, const litehtml::element::ptr&) override {}
  void set_cursor(const tchar_t*) override {}
  void transform_text(litehtml::tstring&, litehtml::text_transform) override {}
  void import_css(litehtml::tstring&, const litehtml::tstring&, litehtml::tstring&) override {}
  void set_clip(const litehtml::position&, const litehtml::border_radiuses&, bool, bool) override {}
  void del_clip() override {}
  void get_client_rect(litehtml::position& client) const override { client = {0, 0, 1024, 768}; }
  std::shared_ptr<litehtml::element> create_element(const tchar_t*, const litehtml::string_map&,
                                                    const std::shared_ptr<litehtml::document>&) override {
    return nullptr;
  }
  void get_media_features(litehtml::media_features& media) const override {
    media.type = litehtml::media_type_screen;
    media.width = media.device_width = 1024;
    media.height = media.device_height = 768;
  }
  void get_language(litehtml::tstring&, litehtml::tstring&) const override {}

  litehtml::context FContext;
  litehtml::document::ptr FDocument;
};

}  // namespace bench

#endif
