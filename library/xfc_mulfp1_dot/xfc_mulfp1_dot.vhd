-- Multiplies two IEEE singles into XFloat in adder form: magnitudes from 1 to 4, the bits below the lowest or'ed into
-- it. inf * 0 is nan; a subnormal operand is zero; a product with an exponent below 0 is zero, one with exponent 0 is
-- delivered as half of it with exponent 1.
--   step unpack:  hidden ones, flags; bb takes the sign of the product
--   step choose:  the rows of the product, for each two bits of bb; exponents
--   step rows:    sums of four rows
--   step settle:  the product, range and flags
-- Latency 4 cycles, one less when optimization is 3 and one less when device is 2: a register behind rows and settle
-- always, the third behind choose, the fourth behind unpack.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_mulfp1_dot is
  generic (mantissa : positive; device : natural; optimization : integer; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_mulfp1_dot;

architecture rtl of xfc_mulfp1_dot is
  function number_of(condition : boolean) return natural is
  begin
    if condition then return 1; else return 0; end if;
  end number_of;

  constant exponent_bits : positive := 10;
  constant bias          : positive := 127;
  constant fraction_bits : positive := 23;
  constant ieee_exponent : positive := 8;
  constant factor_bits   : positive := fraction_bits + 3;        -- two's complement, an even number of bits
  constant product_bits  : positive := 2 * factor_bits;
  constant sign_bits     : positive := product_bits - 2 * fraction_bits - 2;
  constant dropped_bits  : positive := product_bits - mantissa;
  constant latency       : positive := 3 + number_of(optimization < 3) - number_of(device = 2);
  constant unpack_border : natural := number_of(latency = 4);
  constant choose_border : natural := number_of(latency >= 3);

  subtype ieee_exponent_field is std_logic_vector(ieee_exponent - 1 downto 0);
  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);   -- two's complement
  subtype factor_field is std_logic_vector(factor_bits - 1 downto 0);
  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype mark_field is std_logic_vector(2 downto 0);                       -- nan, zip, sat

  -- unpack
  signal a_exponent_d, b_exponent_d, a_exponent, b_exponent : ieee_exponent_field;
  signal a_zero, b_zero, a_ones, b_ones, a_infinite, b_infinite, nan, sat, zip : std_logic;
  signal sign : std_logic_vector(0 downto 0);
  signal marks_d, unpack_marks : mark_field;
  signal significand_d, significand : std_logic_vector(fraction_bits downto 0);
  signal before_increment, factor_d, factor : factor_field;

  -- choose
  signal both_exponents_d, both_exponents : std_logic_vector(ieee_exponent downto 0);
  signal choose_marks_d, choose_marks : std_logic_vector(3 downto 0);               -- sign, nan, zip, sat

  -- rows
  signal exponent_d, exponent : exponent_field;
  signal wide_significand : factor_field;
  signal product : std_logic_vector(product_bits - 1 downto 0);
  signal marks : std_logic_vector(3 downto 0);

  -- settle
  signal lost, halve, too_small : std_logic;
  signal kept, result_d : mantissa_field;
  signal next_exponent : exponent_field;
  signal result_flags_d, result_flags : mark_field;
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_mulfp1_dot: mantissa is 32 or 36" severity failure;
  assert device <= 2 report "xfc_mulfp1_dot: device is 0, 1 or 2" severity failure;
  assert optimization <= 3 report "xfc_mulfp1_dot: optimization is at most 3" severity failure;
  assert synthesize <= 1 report "xfc_mulfp1_dot: synthesize is 0 or 1" severity failure;

  -- unpack
  a_exponent_d <= aa(31 downto 24);
  b_exponent_d <= bb(31 downto 24);
  sign(0) <= aa(32) xor bb(32);
  a_zero <= '1' when unsigned(a_exponent_d) = 0 else '0';
  b_zero <= '1' when unsigned(b_exponent_d) = 0 else '0';
  a_ones <= '1' when unsigned(a_exponent_d) = 255 else '0';
  b_ones <= '1' when unsigned(b_exponent_d) = 255 else '0';
  a_infinite <= a_ones when unsigned(aa(23 downto 1)) = 0 else '0';
  b_infinite <= b_ones when unsigned(bb(23 downto 1)) = 0 else '0';
  nan <= (a_ones and not a_infinite) or (b_ones and not b_infinite) or (a_infinite and b_zero) or
         (a_zero and b_infinite);
  sat <= not nan and (a_infinite or b_infinite);
  zip <= not nan and not sat and (a_zero or b_zero);
  marks_d <= nan & zip & sat;
  significand_d <= '1' & aa(23 downto 1);
  before_increment <= not ("001" & bb(23 downto 1)) when sign = "1" else "001" & bb(23 downto 1);
  factor_d <= std_logic_vector(unsigned(before_increment) + unsigned(sign));

  unpack_0 : entity work.xfc_register generic map (ieee_exponent, unpack_border)
    port map (sysclk, enable, a_exponent_d, a_exponent);
  unpack_1 : entity work.xfc_register generic map (ieee_exponent, unpack_border)
    port map (sysclk, enable, b_exponent_d, b_exponent);
  unpack_2 : entity work.xfc_register generic map (3, unpack_border)
    port map (sysclk, enable, marks_d, unpack_marks);
  unpack_3 : entity work.xfc_register generic map (fraction_bits + 1, unpack_border)
    port map (sysclk, enable, significand_d, significand);
  unpack_4 : entity work.xfc_register generic map (factor_bits, unpack_border)
    port map (sysclk, enable, factor_d, factor);

  -- choose
  both_exponents_d <= std_logic_vector(resize(unsigned(a_exponent), ieee_exponent + 1) + unsigned(b_exponent));
  choose_marks_d <= factor(factor_bits - 1) & unpack_marks;

  choose_0 : entity work.xfc_register generic map (ieee_exponent + 1, choose_border)
    port map (sysclk, enable, both_exponents_d, both_exponents);
  choose_1 : entity work.xfc_register generic map (4, choose_border)
    port map (sysclk, enable, choose_marks_d, choose_marks);

  -- rows
  exponent_d <= std_logic_vector(resize(unsigned(both_exponents), exponent_bits) - bias);
  wide_significand <= "00" & significand;
  multiply : entity work.xfc_product generic map (factor_bits, synthesize, 0, 1, 0, 0, 0, choose_border)
    port map (sysclk, enable, wide_significand, factor, product);

  rows_0 : entity work.xfc_register generic map (exponent_bits, 1) port map (sysclk, enable, exponent_d, exponent);
  rows_1 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, choose_marks, marks);

  -- settle: the product's bits from 4 on are its sign, known before
  lost <= '0' when unsigned(product(dropped_bits - 1 downto 0)) = 0 else '1';
  halve <= '1' when unsigned(exponent) = 0 else '0';
  kept(mantissa - 1 downto mantissa - sign_bits) <= (others => marks(3));
  kept(mantissa - sign_bits - 1 downto 1) <= product(product_bits - sign_bits - 1 downto dropped_bits + 1);
  kept(0) <= product(dropped_bits) or lost;
  result_d <= kept(mantissa - 1) & kept(mantissa - 1 downto 2) & (kept(1) or kept(0)) when halve = '1' else kept;
  next_exponent <= exponent(exponent_bits - 1 downto 1) & (exponent(0) or halve);
  too_small <= exponent(exponent_bits - 1);
  result_flags_d <= marks(2) & (marks(1) or (too_small and not marks(2) and not marks(0))) & marks(0);

  settle_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, next_exponent, cc(exponent_bits downto 1));
  settle_1 : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, result_d, cc(mantissa + exponent_bits downto exponent_bits + 1));
  settle_2 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, result_flags_d, result_flags);
  ccsat <= result_flags(0);
  cczip <= result_flags(1);
  ccnan <= result_flags(2);
end rtl;
