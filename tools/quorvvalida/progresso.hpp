// A progress bar on the terminal while a file is read: share, lines per second, time left.
#ifndef QUORVVALIDA_TOOLS_PROGRESSO_HPP_
#define QUORVVALIDA_TOOLS_PROGRESSO_HPP_

#include <chrono>
#include <cstdint>
#include <cstdio>

#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// True when stderr is a terminal, the only place the bar is drawn.
bool ErroEhTerminal();

class BarraDeProgresso {
 public:
  // The bar estimates the lines read from the validator's progress figure, which counts
  // differently for each kind of file; `tamanho` is the file's length in bytes.
  BarraDeProgresso(bool ativa, Tipo tipo, std::uint64_t tamanho);
  ~BarraDeProgresso();
  BarraDeProgresso(const BarraDeProgresso&) = delete;
  BarraDeProgresso& operator=(const BarraDeProgresso&) = delete;

  // Takes the validator's figure; draws at the first, then at most ten times a second.
  void Atualiza(double porcentagem);
  // Clears the bar from the terminal.
  void Encerra();

 private:
  void Desenha(double linhas);

  bool ativa_;
  Tipo tipo_;
  double linhasTotais_;
  std::chrono::steady_clock::time_point inicio_;
  std::chrono::steady_clock::time_point ultimoDesenho_;
  bool desenhou_ = false;
};

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_PROGRESSO_HPP_
