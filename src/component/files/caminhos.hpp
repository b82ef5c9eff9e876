// Paths as the library receives them (UTF-8 text) and the warnings file's place.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_CAMINHOS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_CAMINHOS_HPP_

#include <filesystem>
#include <string>
#include <string_view>

namespace quorv::caminhos {

// Name of the warnings file that every run writes in its working directory.
inline constexpr std::string_view kAdvertencias = "ADVERTENCIAS.TXT";

// The filesystem path of a UTF-8 path text.
std::filesystem::path Caminho(std::string_view utf8);

// True when the text names an existing directory.
bool DiretorioExiste(std::string_view utf8);

// The working directory, the platform's separator and ADVERTENCIAS.TXT.
std::string Advertencias(std::string_view diretorio);

// True when the text names an existing file or directory.
bool Existe(std::string_view utf8);

// True when both texts name one and the same existing file (links, "./" and case-folding file
// systems included), so that writing to one would change the other.
bool MesmoArquivo(std::string_view a, std::string_view b);

// Deletes a file; a file that is not there is no failure, and a directory is left alone.
void Apaga(std::string_view utf8);

}  // namespace quorv::caminhos

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_CAMINHOS_HPP_
