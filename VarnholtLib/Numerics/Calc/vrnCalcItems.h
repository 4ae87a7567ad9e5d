#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcError.h"

/// What a parsed expression consists of: the items that TCalc (vrnCalc.h) keeps in its list, and the
/// keywords and functions that applications register.
///
/// An application meets these classes in three places: a function's callback receives its parameters as
/// TFunctionParams, GetKeywordsUsed lists TKeyword objects, and TCalc::GetItems shows how an expression was
/// cut.
///
///     Extended Range(const TFunction&, const TFunctionParams& params) {
///         return params.Get_Calc(1).Calculate() - params.Get_Calc(0).Calculate();
///     }
///
/// TCalc makes the items, keywords and functions that it lists and owns them. An item that an application
/// makes for itself belongs to the application; the evaluator must outlive it.
///
/// What callbacks may do: register, parse and calculate, also on the evaluator that calls them. What they
/// replace stays valid until the calculation ends. They must not delete an evaluator, or an item of the
/// application, that is being calculated, or a parent of one.
///
/// When a group or a parameter that a callback parses anew takes effect:
///
/// - A parameter of an application's function or of @StDev: at once, if the function calculates it after that.
/// - A group, or a parameter of another built-in function: at the next calculation. Its steps are part of the
///   program of the calculation under way, which does not check each group for changes: a check made
///   an expression with four groups 29 percent slower.
///
/// Threads: as TCalc, one thread at a time.
namespace Varnholt {

class TCalc;
class TFunction;
class TFunctionParams;

/// The callback of a keyword. It receives the evaluator on which the keyword was registered, the keyword's
/// name without its dollar sign, and the pointer given at registration. An exception passes through
/// Calculate.
using TKeywordEvent = std::function<Extended(TCalc& calc, const String& keyword, void* param)>;

/// The callback of a function. It receives the parameters as evaluators and decides
/// which of them it calculates, and how often. An exception passes through Calculate.
using TFunctionEvent = std::function<Extended(const TFunction& function, const TFunctionParams& params)>;

/// An ordered list of evaluators; it does not own them.
using TCalcList = std::vector<TCalc*>;

/// What an object of the family is, for walks over the items of an expression.
enum class TCalcKind : std::uint8_t { Calc, Keyword, Num, Brackets, KeywordNum, FunctionNum, Operator };

/// A piece of a cleaned expression. The pieces of one expression share its text.
struct TCalcText {
    std::shared_ptr<const String> Whole;
    std::uint32_t First = 0;  // 0-based position in Whole
    std::uint32_t Length = 0;

    [[nodiscard]] StringView View() const {
        return Whole ? StringView(*Whole).substr(First, Length) : StringView();
    }
    /// The piece from a position of Whole up to another one, trimmed.
    [[nodiscard]] TCalcText Trimmed(std::size_t first, std::size_t end) const;
    /// All of a text. Raises Exception "The expression is too long" for 2^32 - 1 characters and more.
    [[nodiscard]] static TCalcText Of(String text);
};

/// What only the module itself may call: it makes the objects that belong to an evaluator.
class TCalcOwnerKey {
    friend class TCalcParser;
    friend class TBrackets;
    friend class TFunctionNum;
    TCalcOwnerKey() = default;
};

/// Base of the family.
class VARNHOLT_EXPORT TCalcObj {
public:
    virtual ~TCalcObj();
    TCalcObj(const TCalcObj&) = delete;
    TCalcObj& operator=(const TCalcObj&) = delete;

    /// The evaluator that owns the object; for an evaluator its parent, or none.
    [[nodiscard]] TCalc* GetCalc() const noexcept { return FCalc; }
    [[nodiscard]] TCalcKind GetKind() const noexcept { return FKind; }

protected:
    TCalcObj(TCalc* calc, TCalcKind kind) noexcept : FCalc(calc), FKind(kind) {}

private:
    friend class TCalc;

    /// One of the object's evaluators that still has items, or none. By it a deep expression is freed without
    /// recursion: the object itself is deleted when none is left.
    virtual TCalc* NextToEmpty() noexcept;

    TCalc* FCalc;
    TCalcKind FKind;
};

/// A registered keyword: a name whose value the application supplies at each calculation, by a callback or as a variable.
class VARNHOLT_EXPORT TKeyword final : public TCalcObj {
public:
    /// Raises EArgumentNilException for an empty callback.
    TKeyword(TCalc& calc, StringView keyword, void* param, TKeywordEvent event);

    /// The name without the dollar sign.
    [[nodiscard]] const String& GetKeyword() const noexcept { return FKeyword; }
    /// The pointer given at registration, or none.
    [[nodiscard]] void* GetParam() const noexcept { return FParam; }
    /// The address of the value if the keyword was registered as a variable of type double, else none.
    [[nodiscard]] const double* GetVariable() const noexcept {
        return FIsVariable ? static_cast<const double*>(FParam) : nullptr;
    }
    /// Calls the application for the value.
    [[nodiscard]] Extended Number() const;

private:
    friend class TCalc;
    friend class TCalcProgram;
    friend class TKeywordNum;

    /// As Number, inside a calculation of the evaluator's tree.
    [[nodiscard]] Extended Ask() const { return FEvent(*GetCalc(), FKeyword, FParam); }

    String FKeyword;
    void* FParam;
    TKeywordEvent FEvent;
    bool FIsVariable = false;
};

/// The functions that every evaluator knows; fuNone marks a function that an application registered.
enum TBuiltIn : std::uint8_t { fuNone, fuSum, fuMin, fuMax, fuAvg, fuMedian, fuStDev, fuSqrt };

/// A function that expressions call by its name.
class VARNHOLT_EXPORT TFunction final {
public:
    /// No limit on the number of parameters, on that side.
    static constexpr int kNoLimit = -1;

    /// Raises EArgumentNilException for an empty callback.
    TFunction(StringView name, int minParams, int maxParams, TFunctionEvent event, TBuiltIn builtIn = fuNone);

    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    [[nodiscard]] int GetMinParams() const noexcept { return FMinParams; }
    [[nodiscard]] int GetMaxParams() const noexcept { return FMaxParams; }
    [[nodiscard]] TBuiltIn GetBuiltIn() const noexcept { return FBuiltIn; }

    /// Whether a call may have so many parameters.
    [[nodiscard]] bool Accepts(std::size_t count) const noexcept;
    /// Calls the function. Raises ceParam if it does not accept the number of parameters or if one is empty.
    [[nodiscard]] Extended Execute(const TCalcList& params) const;

private:
    int FMinParams;
    int FMaxParams;
    String FName;
    TFunctionEvent FEvent;
    TBuiltIn FBuiltIn;
};

/// The parameters of one call, a view that is valid during the call.
class VARNHOLT_EXPORT TFunctionParams final {
public:
    explicit TFunctionParams(const TCalcList& list) noexcept : FList(list) {}

    [[nodiscard]] int Get_Count() const noexcept { return static_cast<int>(FList.size()); }
    /// The evaluator of a parameter, by 0-based index; its Calculate returns the value.
    /// Raises EListError for an index outside the list.
    [[nodiscard]] TCalc& Get_Calc(int index) const;

private:
    const TCalcList& FList;
};

/// An operand.
class VARNHOLT_EXPORT TBaseNum : public TCalcObj {
public:
    [[nodiscard]] virtual Extended Get_Number() const = 0;

protected:
    using TCalcObj::TCalcObj;
};

/// A number.
class VARNHOLT_EXPORT TNum final : public TBaseNum {
public:
    /// Reads a token. A leading lower-case "n" before further characters is read as a minus; the rest follows
    /// StrToFloat, with the decimal separator in force. Raises EConvertError for anything else.
    TNum(TCalc& calc, StringView text);
    TNum(TCalc& calc, Extended value) noexcept : TBaseNum(&calc, TCalcKind::Num), FNum(value) {}

    [[nodiscard]] Extended Get_Number() const override { return FNum; }

private:
    Extended FNum;
};

/// A group in brackets: an expression of its own, whose parent is the evaluator of the group.
class VARNHOLT_EXPORT TBrackets final : public TBaseNum {
public:
    /// Parses the text between the brackets. Raises what TCalc::Parse raises.
    TBrackets(TCalc& calc, StringView text);
    TBrackets(TCalcOwnerKey, TCalc& calc, std::unique_ptr<TCalc> newCalc) noexcept;
    ~TBrackets() override;

    [[nodiscard]] TCalc& GetNewCalc() const noexcept { return *FNewCalc; }
    [[nodiscard]] Extended Get_Number() const override;

private:
    TCalc* NextToEmpty() noexcept override;

    std::unique_ptr<TCalc> FNewCalc;
};

/// A keyword in an expression. It keeps only the name: the keyword is looked up at each calculation.
class VARNHOLT_EXPORT TKeywordNum final : public TBaseNum {
public:
    TKeywordNum(TCalc& calc, StringView keyword)
        : TBaseNum(&calc, TCalcKind::KeywordNum), FKeyword(keyword) {}

    [[nodiscard]] const String& GetKeyword() const noexcept { return FKeyword; }
    /// The registered keyword that the name means now, or none.
    [[nodiscard]] TKeyword* GetKeywordObject() const;
    /// Raises ceKeyword with the name if no such keyword is registered here or in a parent.
    [[nodiscard]] Extended Get_Number() const override;

private:
    friend class TCalcProgram;

    /// As Get_Number, inside a calculation of the evaluator's tree.
    [[nodiscard]] Extended Ask() const;

    String FKeyword;
};

/// A function call in an expression.
class VARNHOLT_EXPORT TFunctionNum final : public TBaseNum {
public:
    /// Looks the function up from the evaluator, then parses the text between the brackets of the call.
    /// Raises ceFunction for an unknown function, and what Parse raises.
    TFunctionNum(TCalc& calc, StringView functionName, StringView params);
    /// The function must outlive the call; whichever evaluator registered it owns it.
    TFunctionNum(TCalcOwnerKey, TCalc& calc, const TFunction& function, TCalcText exp) noexcept;
    ~TFunctionNum() override;

    /// Cuts the text into parameters at each blank or comma outside brackets and parses each one. The new
    /// parameters replace the former ones. Raises ceSyntax for an empty parameter, ceParam for a number of
    /// parameters that the function does not accept, and what TCalc::Parse raises for a parameter; then the
    /// former parameters stay.
    void Parse();

    [[nodiscard]] const TFunction& GetFunction() const noexcept { return FFunction; }
    /// The text between the brackets of the call, trimmed.
    [[nodiscard]] String GetExp() const { return String(FExp.View()); }
    /// One evaluator for each parameter, in order; the call owns them.
    [[nodiscard]] const TCalcList& GetParams() const noexcept { return FParams; }
    [[nodiscard]] Extended Get_Number() const override;

    void AddParam(TCalcOwnerKey, std::unique_ptr<TCalc> param);

private:
    using TOwnedCalcs = std::vector<std::unique_ptr<TCalc>>;

    TCalc* NextToEmpty() noexcept override;
    void TakeParams(TOwnedCalcs params);

    const TFunction& FFunction;
    TCalcText FExp;
    TCalcList FParams;
    TOwnedCalcs FOwnedParams;  // those of FParams come last, after replaced ones that may still be in use
};

/// One of the operators + - * / ^.
class VARNHOLT_EXPORT TOperator final : public TCalcObj {
public:
    /// Raises ceOperator with the text unless it is exactly one of the five operators.
    TOperator(TCalc& calc, StringView text);

    [[nodiscard]] Char GetChar() const noexcept { return FChar; }
    [[nodiscard]] String GetStr() const { return String(1, FChar); }
    /// left + right and so on, in extended precision; "^" is Power of the platform.
    /// Raises ceDivideByZero for "/" with right equal to 0.
    [[nodiscard]] Extended Execute(Extended left, Extended right) const;

private:
    Char FChar;
};

}  // namespace Varnholt
