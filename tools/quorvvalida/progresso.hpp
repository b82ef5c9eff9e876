// Progress on the terminal while files are read: one line on stderr, drawn only when stderr is
// a terminal, that fits the terminal's width (read again at every drawing, so that it follows a
// resize) and is wiped when the work ends.
#ifndef QUORVVALIDA_TOOLS_PROGRESSO_HPP_
#define QUORVVALIDA_TOOLS_PROGRESSO_HPP_

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// True when stderr is a terminal, the only place the bar is drawn.
bool ErroEhTerminal();

// Columns of the terminal on stderr; 80 when it cannot be told.
int LarguraDoTerminal();

// The line drawn for a share done, fitted to `largura` columns (one is left free, so that the
// terminal never wraps): a bar, then the texts as far as they fit.
std::string LinhaDeProgresso(double fracao, const std::string& texto, int largura);

class BarraDeProgresso {
 public:
  // Draws nothing unless `ativa` and stderr is a terminal.
  explicit BarraDeProgresso(bool ativa);
  ~BarraDeProgresso();
  BarraDeProgresso(const BarraDeProgresso&) = delete;
  BarraDeProgresso& operator=(const BarraDeProgresso&) = delete;

  bool Ativa() const { return ativa_; }

  // The files about to be validated, with their kinds and sizes in bytes.
  void Inicia(const std::vector<Tipo>& tipos, const std::vector<std::uint64_t>& tamanhos);
  // The validator's progress figure for file `indice`; callable from any thread. Draws at the
  // first figure, then at most ten times a second.
  void Atualiza(std::size_t indice, double porcentagem);
  // File `indice` is done.
  void Conclui(std::size_t indice);
  // A line of its own (while standard input is received), drawn at most ten times a second.
  void Mostra(const std::string& texto);
  // Wipes the line from the terminal.
  void Encerra();

 private:
  bool PodeDesenhar();
  void Desenha();
  void Escreve(const std::string& linha);

  bool ativa_;
  std::mutex trava_;
  std::vector<Tipo> tipos_;
  std::vector<std::uint64_t> tamanhos_;
  std::vector<double> feitos_;  // share of each file done, 0 to 1
  std::size_t concluidos_ = 0;
  std::uint64_t totalBytes_ = 0;
  std::chrono::steady_clock::time_point inicio_;
  std::chrono::steady_clock::time_point ultimoDesenho_;
  bool desenhou_ = false;
};

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_PROGRESSO_HPP_
