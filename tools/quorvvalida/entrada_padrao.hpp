// A file read from standard input ("-"): spooled to a private temporary file in the working
// directory, which the run then validates as any file, and which goes when the run is over.
#ifndef QUORVVALIDA_TOOLS_ENTRADA_PADRAO_HPP_
#define QUORVVALIDA_TOOLS_ENTRADA_PADRAO_HPP_

#include <string>

#include "progresso.hpp"

namespace quorv::ferramenta {

class EntradaPadrao {
 public:
  EntradaPadrao() = default;
  ~EntradaPadrao();
  EntradaPadrao(const EntradaPadrao&) = delete;
  EntradaPadrao& operator=(const EntradaPadrao&) = delete;

  // Copies standard input to a new temporary file in `diretorio`. On Linux the file has no name
  // at all (it is gone whatever ends the program); elsewhere it is a hidden file removed by the
  // destructor. False, with `erro` telling why, when it could not be written whole.
  bool Recebe(const std::string& diretorio, BarraDeProgresso& barra, std::string& erro);
  // The path through which the library opens the copy.
  const std::string& Caminho() const { return caminho_; }

 private:
  int descritor_ = -1;
  std::string caminho_;
  bool apagar_ = false;
};

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_ENTRADA_PADRAO_HPP_
