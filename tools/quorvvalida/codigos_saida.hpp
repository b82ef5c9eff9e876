// The exit codes of the tool, the one table that --help, the JSON objects and the README follow.
#ifndef QUORVVALIDA_TOOLS_CODIGOS_SAIDA_HPP_
#define QUORVVALIDA_TOOLS_CODIGOS_SAIDA_HPP_

namespace quorv::ferramenta {

inline constexpr int kAceito = 0;             // validated, no warnings file remains
inline constexpr int kComAdvertencias = 1;    // warnings were found
inline constexpr int kUsoIncorreto = 2;       // unknown option, bad value, missing argument
inline constexpr int kFalhaEntradaSaida = 3;  // a file or directory unusable, a write that failed
inline constexpr int kErroInterno = 4;        // a failure of the tool itself

struct CodigoSaida {
  int codigo;
  const char* descricao;  // Portuguese, as --help shows it
};

inline constexpr CodigoSaida kCodigosSaida[] = {
    {kAceito, "aceito: validado sem advertências"},
    {kComAdvertencias, "advertências encontradas"},
    {kUsoIncorreto, "uso incorreto: opção desconhecida, valor inválido ou argumento faltando"},
    {kFalhaEntradaSaida,
     "falha de entrada ou saída: arquivo ausente ou ilegível, diretório de trabalho ausente, "
     "falha de gravação"},
    {kErroInterno, "erro interno"},
};

// Of two exit codes of a batch, the one that tells the worse outcome: the higher.
constexpr int PiorCodigo(int a, int b) {
  return a > b ? a : b;
}

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_CODIGOS_SAIDA_HPP_
