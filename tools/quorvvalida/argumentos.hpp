// The argument parser (CLI11) speaking Portuguese: its help through a formatter of its own, its
// errors through its failure-message hook, and validators whose messages say what an option
// accepts.
#ifndef QUORVVALIDA_TOOLS_ARGUMENTOS_HPP_
#define QUORVVALIDA_TOOLS_ARGUMENTOS_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace quorv::ferramenta {

// Help in Portuguese: the parser's labels, and usage lines written for the command.
class FormatadorPortugues : public CLI::Formatter {
 public:
  // Help lines are at most this wide.
  static constexpr std::size_t kLargura = 100;

  explicit FormatadorPortugues(std::string uso);
  std::string make_usage(const CLI::App* app, std::string name) const override;
  // The option's description broken at blanks to fit beside its name.
  std::string make_option_desc(const CLI::Option* opcao) const override;

 private:
  std::string uso_;
};

// The text broken at blanks into lines of at most `largura` characters (UTF-8).
std::string Quebra(const std::string& texto, std::size_t largura);

// The usage error in one Portuguese sentence, from the kind of the parser's error and the state
// it left: an unknown option, an argument left over, a missing value, a value refused by a
// validator. `argumentos` are the words of the command line after the program's name.
std::string MensagemDeUso(const CLI::App& app, const CLI::Error& erro,
                          const std::vector<std::string>& argumentos);

// The message of a parse error as the program's failure hook writes it, in one line.
std::string MensagemDoErro(const CLI::App& app, const CLI::ParseError& erro);

// Installs MensagemDeUso as the failure hook of the program and its commands.
void UsaMensagensEmPortugues(CLI::App& app, const std::vector<std::string>& argumentos);

// Whole numbers from `minimo` to `maximo`, written in decimal digits alone.
std::optional<std::uint64_t> InteiroEntre(const std::string& texto, std::uint64_t minimo,
                                          std::uint64_t maximo);

// A validator of whole numbers from `minimo` to `maximo`.
CLI::Validator ValidadorInteiro(std::uint64_t minimo, std::uint64_t maximo);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_ARGUMENTOS_HPP_
