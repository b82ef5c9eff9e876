// Cutting a text at its blanks into lines of a given width, as the return file lays out the
// long warning texts.
#ifndef QUORVVALIDA_SRC_WEB_PARTIR_TEXTO_HPP_
#define QUORVVALIDA_SRC_WEB_PARTIR_TEXTO_HPP_

#include <string>
#include <string_view>

namespace quorv::web {

// Line `pedaco` (from 1) of the UTF-8 text cut at blanks into lines of at most `largura`
// characters, trimmed; empty when the text has no blank or no such line exists.
std::string PedacoDoTexto(std::string_view texto, int pedaco, int largura);

}  // namespace quorv::web

#endif  // QUORVVALIDA_SRC_WEB_PARTIR_TEXTO_HPP_
